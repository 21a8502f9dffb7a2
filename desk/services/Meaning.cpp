#include <array>

#include "desk/services/Service.h"
#include "platform/value/Convert.h"

namespace desk {
namespace {

using platform::EqualsIgnoreCase;
using platform::Variant;

struct Call {
  std::string_view method;
  std::span<const Variant> arguments;
  const std::function<Variant(std::string_view)>& property;
};

// An argument or property as text, whatever came: what is told must not depend on what the service accepts.
std::string TextOf(const Variant& value) {
  std::string text;
  platform::SkipErrors([&] { text = platform::ToText(value); });
  return text;
}

std::string TextAt(const Call& call, std::size_t position) {
  return position < call.arguments.size() ? TextOf(call.arguments[position]) : std::string();
}

std::int32_t NumberAt(const Call& call, std::size_t position) {
  std::int32_t number = 0;
  if (position >= call.arguments.size()) return number;
  platform::SkipErrors([&] { number = platform::ToInt32(call.arguments[position]); });
  return number;
}

void TellSql(Witness& witness, const Call& call) { witness.OnSql(TextAt(call, 1)); }

void TellUsage(Witness& witness, const Call& call) { witness.OnUsage(TextAt(call, 0), TextAt(call, 1)); }

// (text), the type following from the operation.
template <std::int32_t kType>
void TellTextLookup(Witness& witness, const Call& call) {
  witness.OnLookup(
      {.kind = std::string(call.method), .dataType = kType, .text = TextAt(call, 0), .filter = {}});
}

void TellItemLookup(Witness& witness, const Call& call) {
  witness.OnLookup({.kind = std::string(call.method),
                    .dataType = NumberAt(call, 0),
                    .text = TextAt(call, 1),
                    .filter = TextAt(call, 2)});
}

void TellUnitLookup(Witness& witness, const Call& call) {
  witness.OnLookup({.kind = std::string(call.method),
                    .dataType = kUnitType,
                    .text = TextAt(call, 1),
                    .filter = TextAt(call, 0)});
}

void TellSubMesLookup(Witness& witness, const Call& call) {
  witness.OnLookup({.kind = std::string(call.method),
                    .dataType = NumberAt(call, 0),
                    .text = TextAt(call, 1),
                    .filter = {}});
}

void TellBatchList(Witness& witness, const Call& call) {
  witness.OnLookup({.kind = "BaseList",
                    .dataType = kBatchType,
                    .text = TextOf(call.property("KeyWord")),
                    .filter = TextOf(call.property("Filter"))});
}

struct Meaning {
  std::string_view programmaticId;
  std::string_view method;
  void (*tell)(Witness& witness, const Call& call);
};

constexpr std::array kMeanings = {
    Meaning{"TOVMAppConnection.AppConnection", "Execute", TellSql},
    Meaning{"TOVMClass.ClassInfo", "GetData", TellSql},
    Meaning{"TOVEBCGLView.GLView", "ItemLookUp", TellItemLookup},
    Meaning{"TOVEBCGLView.GLView", "UnitLookup", TellUnitLookup},
    Meaning{"TOVEBCGLView.GLView", "CurrencyLookup", TellTextLookup<kCurrencyType>},
    Meaning{"TOVEBCGLView.GLView", "AccountLookup", TellTextLookup<kAccountType>},
    Meaning{"TOVEBCGLView.GLView", "SettTypeLookup", TellTextLookup<kSettlementType>},
    Meaning{"TOVEBCGLView.GLView", "SubMesLookup", TellSubMesLookup},
    Meaning{"TOVBaseList.BaseList", "Show", TellBatchList},
    Meaning{"VEZ_APFC.FrameData", "WriteMGLog", TellUsage},
};

}  // namespace

void TellMeaning(Witness& witness, std::string_view programmaticId, std::string_view method,
                 std::span<const Variant> arguments,
                 const std::function<Variant(std::string_view property)>& property) {
  for (const Meaning& meaning : kMeanings) {
    if (!EqualsIgnoreCase(meaning.programmaticId, programmaticId)) continue;
    if (!EqualsIgnoreCase(meaning.method, method)) continue;
    // The operation's own spelling is told, however it was called.
    return meaning.tell(witness, {.method = meaning.method, .arguments = arguments, .property = property});
  }
}

}  // namespace desk
