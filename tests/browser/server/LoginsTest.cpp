#include <set>

#include <gtest/gtest.h>

#include "browser/server/Logins.h"

namespace browser {
namespace {

using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;

TEST(Logins, SecretsAreLongAndDiffer) {
  std::set<std::string> secrets;
  for (int i = 0; i < 100; ++i) secrets.insert(NewSecret());
  EXPECT_EQ(secrets.size(), 100U);
  EXPECT_EQ(secrets.begin()->size(), 32U);
}

TEST(Logins, AreFoundByTheirCookieUntilUnusedForLong) {
  Logins logins;
  const Moment start;
  const std::string cookie = logins.Add("lily", 3, start).cookie;
  ASSERT_NE(logins.Find(cookie, start + hours(11)), nullptr);
  EXPECT_NE(logins.Find(cookie, start + hours(22)), nullptr);
  EXPECT_EQ(logins.Find(cookie.substr(1), start), nullptr);
  EXPECT_EQ(logins.Find("", start), nullptr);
  EXPECT_EQ(logins.Find(cookie, start + hours(35)), nullptr);
}

TEST(Logins, TheLongestUnusedGoesWhenThereAreTooMany) {
  Logins logins;
  const Moment start;
  const std::string first = logins.Add("", 0, start).cookie;
  std::string second;
  for (std::size_t i = 1; i <= Logins::kMost; ++i) {
    const std::string cookie = logins.Add("", 0, start + seconds(i)).cookie;
    if (i == 1) second = cookie;
  }
  EXPECT_EQ(logins.Find(first, start), nullptr);
  EXPECT_NE(logins.Find(second, start), nullptr);
}

TEST(Attempts, WaitsGrowAfterFiveFailures) {
  Attempts attempts;
  Moment now{hours(1)};
  for (int i = 0; i < 4; ++i) attempts.Failed("lily", now);
  EXPECT_EQ(attempts.WaitFor("lily", now), seconds(0));
  attempts.Failed("lily", now);
  EXPECT_EQ(attempts.WaitFor("lily", now), seconds(2));
  EXPECT_EQ(attempts.WaitFor("lily", now + seconds(2)), seconds(0));
  EXPECT_EQ(attempts.WaitFor("tom", now), seconds(0));
  attempts.Failed("lily", now);
  EXPECT_EQ(attempts.WaitFor("lily", now), seconds(4));
  for (int i = 0; i < 20; ++i) attempts.Failed("lily", now);
  EXPECT_EQ(attempts.WaitFor("lily", now), seconds(300));
}

TEST(Attempts, AreForgottenAfterSuccessAndAfterAnHour) {
  Attempts attempts;
  const Moment now{hours(1)};
  for (int i = 0; i < 6; ++i) attempts.Failed("lily", now);
  attempts.Succeeded("lily");
  EXPECT_EQ(attempts.WaitFor("lily", now), seconds(0));
  for (int i = 0; i < 6; ++i) attempts.Failed("tom", now);
  attempts.Failed("tom", now + minutes(61));
  EXPECT_EQ(attempts.WaitFor("tom", now + minutes(61)), seconds(0));
}

}  // namespace
}  // namespace browser
