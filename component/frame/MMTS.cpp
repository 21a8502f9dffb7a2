// The component knows nothing of the login: every session value is asked of services that the host offers
// by programmatic id, anew each time.
#include "component/frame/MMTS.h"

#include <algorithm>
#include <array>

#include "component/frame/ProcessState.h"
#include "platform/object/ClassRegistry.h"
#include "platform/rows/ProcessStore.h"
#include "platform/system/Process.h"

namespace component {
namespace {

using platform::CreateObject;
using platform::Dictionary;
using platform::EqualsIgnoreCase;
using platform::Object;
using platform::Recordset;
using platform::Ref;
using platform::Variant;

constexpr std::array<std::string_view, 14> kOuterLoginKeys = {
    "UserName", "UserID", "PropsString", "LogStatus",   "AcctName", "AcctType", "Setuptype",
    "AcctID",   "SubID",  "AcctClosed",  "MachineName", "IP",       "UUID",     "TOVLogin"};

bool IsServedToOuterLogin(std::string_view key) {
  return std::ranges::any_of(kOuterLoginKeys,
                             [key](std::string_view known) { return EqualsIgnoreCase(known, key); });
}

}  // namespace

Variant GetSessionValue(std::string_view key) {
  Variant processId(platform::ProcessId());
  Ref<Object> cache = CreateObject("TOVMtsCacheService.CacheFacade");
  const double login = platform::ToDouble(cache->Call("GetItem", processId, "IsOuterLogin"));
  if (login == 1) return IsServedToOuterLogin(key) ? cache->Call("GetItem", processId, key) : Variant();
  if (login != 0) return {};
  Ref<Object> sharedProps = CreateObject("TOVPropsMgr.ShareProps");
  Variant value = sharedProps->Call("GetProperty", processId, key);
  cache = nullptr;
  sharedProps = nullptr;
  return value;
}

Variant GetSessionValueOrEmpty(std::string_view key) {
  Variant value;
  platform::SkipErrors([&] { value = GetSessionValue(key); });
  return value;
}

std::string GetPropsString() {
  const Ref<Object>& framework = ProcessState::Get().framework;
  if (framework) return platform::ToText(framework->Get("PropsString"));
  return platform::ToText(GetSessionValue("PropsString"));
}

Ref<Recordset> ExecuteSqlOrRaise(const std::string& sql) {
  const Ref<Object> connection = CreateObject("TOVMAppConnection.AppConnection");
  return connection->Call("Execute", GetPropsString(), sql).AsRef<Recordset>();
}

Ref<Recordset> ExecuteSql(const std::string& sql) {
  Ref<Recordset> rows;
  platform::SkipErrors([&] { rows = ExecuteSqlOrRaise(sql); });
  return rows;
}

Variant GetProcessValue(std::string_view key, const std::optional<Variant>& fallback) {
  Variant value = fallback.value_or(Variant());
  platform::SkipErrors([&] {
    const Ref<Dictionary> store = platform::ProcessStore();
    if (const Variant* found = store ? store->Find(key) : nullptr) value = *found;
  });
  return value;
}

void SetProcessValue(std::string_view key, const Variant& value) {
  if (const Ref<Dictionary> store = platform::ProcessStore()) store->Set(key, value);
}

std::int32_t GetAppType() { return platform::ToInt32(GetProcessValue("AppType", 2)); }

std::int32_t GetIndustryType() { return platform::ToInt32(GetProcessValue("IndustryType", 0)); }

bool GetGLAndICUnite() { return platform::ToBoolean(GetProcessValue("GLAndICUnite", true)); }

bool ReadIsLongNumber() {
  bool isLong = true;
  platform::SkipErrors([&] {
    const Ref<Object> profile = CreateObject("TOVEBSBase.SystemProfile");
    const Variant value = profile->Call("GetProfile", GetPropsString(), "IC", "UseShortNumber");
    isLong = value.IsNull() || platform::ToDouble(value) == 1;
  });
  return isLong;
}

void WriteUsageLog(const std::string& code, const std::string& text) {
  platform::SkipErrors([&] {
    const Ref<Object> log = CreateObject("VEZ_APFC.FrameData");
    log->Put("PropString", GetPropsString());
    log->Call("WriteMGLog", code, text);
  });
}

}  // namespace component
