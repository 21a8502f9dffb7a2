// Calls by name against calls through a virtual function, and a dictionary of the size of a filter.
#include <array>
#include <string>

#include <benchmark/benchmark.h>

#include "platform/object/OperationTable.h"
#include "platform/rows/Dictionary.h"

namespace bench {
namespace {

using platform::Dictionary;
using platform::MakeRef;
using platform::Method;
using platform::Object;
using platform::Operations;
using platform::PropertyGet;
using platform::PropertyPut;
using platform::Ref;

class Counter {
 public:
  Counter() = default;
  Counter(const Counter&) = delete;
  Counter& operator=(const Counter&) = delete;
  virtual ~Counter() = default;
  virtual std::int32_t Add(std::int32_t amount) = 0;
};

// As many operations as a report class has.
class Report final : public platform::Exposed<Report>, public Counter {
 public:
  std::int32_t Add(std::int32_t amount) override { return sum_ += amount; }
  std::string Title() const { return title_; }
  void SetTitle(const std::string& title) { title_ = title; }
  void Nothing() {}

  static constexpr std::string_view kClassName = "Bench.Report";
  static constexpr auto kOperations =
      Operations(PropertyGet<&Report::Title>("Title"), PropertyPut<&Report::SetTitle>("Title", "Text"),
                 Method<&Report::Nothing>("ShowFilter"), Method<&Report::Nothing>("GetReportData"),
                 Method<&Report::Nothing>("Refresh"), Method<&Report::Nothing>("AddDataRight"),
                 Method<&Report::Nothing>("FirstItem"), Method<&Report::Nothing>("PreviousItem"),
                 Method<&Report::Nothing>("NextItem"), Method<&Report::Nothing>("LastItem"),
                 Method<&Report::Add>("Add", "Amount"), Method<&Report::Nothing>("FindItem"));

 private:
  std::int32_t sum_ = 0;
  std::string title_;
};

void CallVirtual(benchmark::State& state) {
  const Ref<Report> report = MakeRef<Report>();
  Counter* counter = report.Get();
  for (auto _ : state) {
    benchmark::DoNotOptimize(counter);
    benchmark::DoNotOptimize(counter->Add(1));
  }
}
BENCHMARK(CallVirtual)->Name("CallVirtual");

void CallByName(benchmark::State& state) {
  const Ref<Object> object = MakeRef<Report>();
  for (auto _ : state) benchmark::DoNotOptimize(object->Call("Add", 1));
}
BENCHMARK(CallByName)->Name("CallByName");

void PutTextByName(benchmark::State& state) {
  const Ref<Object> object = MakeRef<Report>();
  for (auto _ : state) object->Put("Title", "收发业务汇总表");
}
BENCHMARK(PutTextByName)->Name("PutTextByName");

std::array<std::string, 30> Keys() {
  std::array<std::string, 30> keys;
  for (std::size_t i = 0; i < keys.size(); ++i) keys[i] = "FilterKey" + std::to_string(i);
  return keys;
}

void DictionarySet30(benchmark::State& state) {
  const auto keys = Keys();
  for (auto _ : state) {
    Dictionary dictionary;
    for (const std::string& key : keys) dictionary.Set(key, 1);
    benchmark::DoNotOptimize(dictionary.Count());
  }
  state.SetItemsProcessed(state.iterations() * 30);
}
BENCHMARK(DictionarySet30)->Name("DictionarySet30");

void DictionaryGet30(benchmark::State& state) {
  const auto keys = Keys();
  Dictionary dictionary;
  for (const std::string& key : keys) dictionary.Set(key, 1);
  for (auto _ : state) {
    for (const std::string& key : keys) benchmark::DoNotOptimize(dictionary.Find(key));
  }
  state.SetItemsProcessed(state.iterations() * 30);
}
BENCHMARK(DictionaryGet30)->Name("DictionaryGet30");

}  // namespace
}  // namespace bench
