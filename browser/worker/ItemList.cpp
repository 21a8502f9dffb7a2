#include "browser/worker/ItemList.h"

#include <algorithm>
#include <span>
#include <utility>

#include "browser/worker/RowText.h"
#include "platform/value/Convert.h"
#include "platform/value/Variant.h"

namespace browser {
namespace {

using platform::CallKind;
using platform::Object;
using platform::Recordset;
using platform::Ref;
using platform::Variant;

class WatchedData final : public Object {
 public:
  WatchedData(Ref<Object> data, std::function<void(const Ref<Recordset>& items)> take)
      : data_(std::move(data)), take_(std::move(take)) {}

  std::string ClassName() const override { return data_->ClassName(); }
  platform::EventSource* Events() override { return data_->Events(); }
  Variant Invoke(std::string_view member, CallKind kind, std::span<Variant> arguments) override {
    Variant answer = data_->Invoke(member, kind, arguments);
    if (platform::EqualsIgnoreCase(member, "GetItems")) take_(answer.AsRef<Recordset>());
    return answer;
  }

 private:
  Ref<Object> data_;
  std::function<void(const Ref<Recordset>& items)> take_;
};

std::string TextAt(const Recordset& items, std::string_view field) {
  const auto column = items.FindField(field);
  return column ? CellText(items, *column, items.CurrentRow()) : std::string();
}

}  // namespace

ItemPlace PlaceOf(const Ref<Recordset>& items) {
  if (!items || !items->IsOpen()) return {};
  ItemPlace place{.position = std::max(items->AbsolutePosition(), 0),
                  .count = items->RecordCount(),
                  .number = {},
                  .name = {}};
  if (place.position == 0) return place;
  place.number = TextAt(*items, "FNumber");
  place.name = TextAt(*items, "FName");
  return place;
}

Ref<Object> WatchItems(Ref<Object> data, std::function<void(const Ref<Recordset>& items)> take) {
  return platform::MakeRef<WatchedData>(std::move(data), std::move(take));
}

}  // namespace browser
