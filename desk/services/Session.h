#pragma once

#include <string>

#include "desk/services/Service.h"

namespace desk {

// The login as a cache of the middle tier knows it.
class CacheFacade final : public Served<CacheFacade> {
 public:
  using Served::Served;

  // "IsOuterLogin" tells where the login came from; every other key is a value of the session.
  platform::Variant GetItem(platform::Variant& processId, const std::string& key) const;

  static constexpr std::string_view kClassName = "TOVMtsCacheService.CacheFacade";
  static constexpr auto kOperations =
      platform::Operations(platform::Method<&CacheFacade::GetItem>("GetItem", "ProcessId", "Key"));
};

// The login as this process knows it.
class ShareProps final : public Served<ShareProps> {
 public:
  using Served::Served;

  platform::Variant GetProperty(platform::Variant& /*processId*/, const std::string& key) const {
    return Behind().SessionValue(key);
  }

  static constexpr std::string_view kClassName = "TOVPropsMgr.ShareProps";
  static constexpr auto kOperations =
      platform::Operations(platform::Method<&ShareProps::GetProperty>("GetProperty", "ProcessId", "Key"));
};

// Whether base data rights apply to the user of the session.
class SecurityInfo final : public Served<SecurityInfo> {
 public:
  using Served::Served;

  bool NeedAutorized(const platform::Variant& /*props*/) const { return Behind().NeedRight(); }

  static constexpr std::string_view kClassName = "TOVEBSBase.SecurityInfo";
  static constexpr auto kOperations =
      platform::Operations(platform::Method<&SecurityInfo::NeedAutorized>("NeedAutorized", "Props"));
};

// Keeps records of what users use.
class FrameData final : public Served<FrameData> {
 public:
  using Served::Served;

  void SetPropString(const platform::Variant& /*props*/) {}
  void WriteMGLog(const std::string& code, const std::string& text) const { Behind().WriteUsage(code, text); }

  static constexpr std::string_view kClassName = "VEZ_APFC.FrameData";
  static constexpr auto kOperations =
      platform::Operations(platform::PropertyPut<&FrameData::SetPropString>("PropString", "Value"),
                           platform::Method<&FrameData::WriteMGLog>("WriteMGLog", "Code", "Text"));
};

}  // namespace desk
