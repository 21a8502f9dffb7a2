#pragma once

#include <span>
#include <string>
#include <string_view>

#include "desk/Backend.h"
#include "platform/value/Variant.h"

namespace desk {

// Who is told what passes between the component and its desk, in the order in which it happens and before
// the service answers. Arguments are as they came in. The default is to take no notice.
class Witness {
 public:
  Witness() = default;
  Witness(const Witness&) = delete;
  Witness& operator=(const Witness&) = delete;
  Witness(Witness&&) = delete;
  Witness& operator=(Witness&&) = delete;
  virtual ~Witness() = default;

  using Arguments = std::span<const platform::Variant>;

  virtual void OnCreated(std::string_view /*programmaticId*/) {}
  virtual void OnReleased(std::string_view /*programmaticId*/) {}
  virtual void OnCalled(std::string_view /*programmaticId*/, std::string_view /*method*/,
                        Arguments /*arguments*/) {}
  // `index` holds the arguments of an indexed property, and is empty for a plain one.
  virtual void OnGot(std::string_view /*programmaticId*/, std::string_view /*property*/,
                     Arguments /*index*/) {}
  virtual void OnPut(std::string_view /*programmaticId*/, std::string_view /*property*/, Arguments /*index*/,
                     const platform::Variant& /*value*/) {}
  virtual void OnSql(std::string_view /*text*/) {}
  virtual void OnLookup(const LookupQuery& /*query*/) {}
  virtual void OnUsage(std::string_view /*code*/, std::string_view /*text*/) {}
};

}  // namespace desk
