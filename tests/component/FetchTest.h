#pragma once

#include <string>
#include <vector>

#include "platform/object/OperationTable.h"
#include "tests/component/ComponentTest.h"
#include "tests/component/FilterControls.h"

namespace component {

// What the tests of reports share: a fetch, and looks at its heading.
class FetchTest : public ComponentTest {
 protected:
  FetchTest() { ServeFilterControls(desk); }

  static std::vector<std::string> Slots(const platform::ClassInfo& info) {
    std::vector<std::string> slots;
    for (const platform::Operation& operation : info.operations) {
      const char* kind = operation.kind == platform::CallKind::kMethod ? ""
                         : operation.kind == platform::CallKind::kGet  ? " get"
                                                                       : " let";
      slots.push_back(std::string(operation.name) + kind);
    }
    return slots;
  }

  static void Fetch(platform::Object& report, const platform::Ref<platform::Dictionary>& filter) {
    report.Put("Filter", platform::Variant(filter));
    report.Call("GetReportData");
  }

  // One key of the heading's columns, from a position on; columns without a text there are left out.
  static std::vector<std::string> Texts(platform::Object& report, const char* key, std::size_t from) {
    std::vector<std::string> texts;
    const platform::Ref<platform::Vector> header = report.Get("Header").AsRef<platform::Vector>();
    for (std::size_t i = from; i < header->Items().size(); ++i) {
      const std::string text = platform::ToText(header->Items()[i].AsRef<platform::Dictionary>()->Value(key));
      if (!text.empty()) texts.push_back(text);
    }
    return texts;
  }
  static std::vector<std::string> Names(platform::Object& report) { return Texts(report, "FColName", 0); }
  static std::vector<std::string> Captions(platform::Object& report, std::size_t from) {
    return Texts(report, "FColCaption", from);
  }
  static std::vector<std::string> Seconds(platform::Object& report, std::size_t from) {
    return Texts(report, "FHeadSecond", from);
  }
  // The columns that are hidden by force.
  static std::vector<std::string> Hidden(platform::Object& report) {
    std::vector<std::string> names;
    for (const platform::Variant& item : report.Get("Header").AsRef<platform::Vector>()->Items()) {
      const platform::Ref<platform::Dictionary> column = item.AsRef<platform::Dictionary>();
      if (platform::ToBoolean(column->Value("FForceHide")))
        names.push_back(platform::ToText(column->Value("FColName")));
    }
    return names;
  }
  static int FrozenColumn(platform::Object& report) {
    return platform::ToInt32(report.Get("Property").AsRef<platform::Dictionary>()->Value("FrozenColumn"));
  }
};

}  // namespace component
