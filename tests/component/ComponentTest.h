#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/frame/ProcessState.h"
#include "component/frame/Report.h"
#include "platform/rows/ProcessStore.h"
#include "platform/value/Clock.h"
#include "tests/component/Desk.h"

namespace component {

// A fresh process for each test: an empty value store, nothing kept, the day 2024-03-31. At the end no report
// and no service object may be left once the process lets go of its own.
class ComponentTest : public ::testing::Test {
 protected:
  ComponentTest() {
    ProcessState::Get() = {};
    platform::SetProcessStore(store);
    platform::Clock::Fix(platform::Date::Of(2024, 3, 31));
  }
  ComponentTest(const ComponentTest&) = delete;
  ComponentTest& operator=(const ComponentTest&) = delete;
  ComponentTest(ComponentTest&&) = delete;
  ComponentTest& operator=(ComponentTest&&) = delete;
  ~ComponentTest() override {
    ProcessState::Get() = {};
    platform::SetProcessStore({});
    platform::Clock::Fix({});
    EXPECT_EQ(Report::LiveCount(), 0) << "a report is still held";
    EXPECT_EQ(desk.living, 0) << "a service object is still held";
  }

  // The description of the error that `action` raises; "nothing raised" otherwise.
  static std::string Raised(const std::function<void()>& action) {
    try {
      action();
    } catch (const platform::Error& error) {
      return error.Description();
    }
    return "nothing raised";
  }
  static platform::ErrorNumber RaisedNumber(const std::function<void()>& action) {
    try {
      action();
    } catch (const platform::Error& error) {
      return error.Number();
    }
    return platform::ErrorNumber{};
  }

  Desk desk;
  platform::Ref<platform::Dictionary> store = Keys({});
};

}  // namespace component
