#include "books/reports/DataComponent.h"

#include "books/reports/Data.h"
#include "books/reports/Data10414.h"
#include "books/reports/ledger/Data10402.h"
#include "books/reports/movement/Data10401.h"
#include "books/reports/movement/Data10413.h"
#include "books/reports/movement/Data10417.h"
#include "books/reports/stock/Data10415.h"
#include "books/reports/stock/Data10424.h"
#include "books/reports/stock/Data302.h"
#include "books/reports/stock/Data303.h"
#include "books/reports/stock/Data332.h"
#include "books/reports/tracking/Data10418.h"
#include "platform/value/Convert.h"

namespace books::reports {
namespace {

struct Entry {
  std::string_view programmaticId;
  platform::Ref<platform::Object> (*create)(const std::shared_ptr<services::Store>& store);
};

template <class Component>
constexpr Entry EntryOf() {
  return {Component::kClassName, [](const std::shared_ptr<services::Store>& store) {
            return platform::Ref<platform::Object>(platform::MakeRef<Component>(store));
          }};
}

// clang-format off
constexpr Entry kComponents[] = {
    EntryOf<Data>(),
    EntryOf<Data302>(),
    EntryOf<Data303>(),
    EntryOf<Data332>(),
    EntryOf<Data10402>(),
    EntryOf<Data10413>(),
    EntryOf<Data10414>(),
    EntryOf<Data10415>(),
    EntryOf<Data10417>(),
    EntryOf<Data10418>(),
    EntryOf<Data10424>(),
    EntryOf<Data1040101>(),
    EntryOf<Data1040102>(),
    EntryOf<Data1040104>(),
};
// clang-format on

}  // namespace

platform::Ref<platform::Object> CreateDataComponent(std::string_view programmaticId,
                                                    const std::shared_ptr<services::Store>& store) {
  for (const Entry& entry : kComponents) {
    if (platform::EqualsIgnoreCase(entry.programmaticId, programmaticId)) return entry.create(store);
  }
  return nullptr;
}

}  // namespace books::reports
