// The fifteen classes by the subsystems that a clerk knows them by. A class that stands in no group is shown
// at the end rather than lost.
#include <algorithm>

#include "browser/worker/Reports.h"
#include "platform/object/ClassRegistry.h"

namespace browser {
namespace {

struct Group {
  std::string_view name;
  std::vector<std::string_view> classes;
};

const std::vector<Group>& KnownGroups() {
  static const std::vector<Group> kGroups = {
      {"即时库存", {"Rpt302", "Rpt332", "Rpt303", "Rpt10424", "Rpt10411", "Rpt10414", "Rpt10415"}},
      {"库存明细账", {"Rpt10402"}},
      {"收发业务", {"Rpt10401", "Rpt10412", "Rpt10413", "Rpt10416", "Rpt10417"}},
      {"业务跟踪", {"Rpt10403", "Rpt10418"}},
  };
  return kGroups;
}

std::string_view ClassName(const platform::ComponentClass& served) {
  return served.programmaticId.substr(served.programmaticId.find('.') + 1);
}

// Making one is the only way to know, and costs next to nothing.
bool IsAvailable(const platform::ComponentClass& served) {
  try {
    return static_cast<bool>(platform::CreateObject(served.programmaticId));
  } catch (const platform::Error& error) {
    return error.Number() != platform::ErrorNumber::kCannotCreate;
  }
}

Json DescribeClass(const platform::ComponentClass& served) {
  Json json = Json::object();
  json["programmaticId"] = std::string(served.programmaticId);
  json["className"] = std::string(ClassName(served));
  json["number"] = std::string(served.number);
  json["name"] = std::string(served.title);
  json["available"] = IsAvailable(served);
  return json;
}

}  // namespace

Json Reports::Groups() const {
  std::vector<platform::ComponentClass> left = host_.Classes();
  Json groups = Json::array();
  auto add = [&](std::string_view name, Json reports) {
    if (!reports.empty()) groups.push_back({{"name", std::string(name)}, {"reports", std::move(reports)}});
  };
  for (const Group& group : KnownGroups()) {
    Json reports = Json::array();
    for (const std::string_view className : group.classes) {
      const auto found = std::ranges::find(left, className, ClassName);
      if (found == left.end()) continue;
      reports.push_back(DescribeClass(*found));
      left.erase(found);
    }
    add(group.name, std::move(reports));
  }
  Json others = Json::array();
  for (const platform::ComponentClass& served : left) others.push_back(DescribeClass(served));
  add("其他", std::move(others));
  return groups;
}

}  // namespace browser
