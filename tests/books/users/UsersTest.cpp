#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "books/schema/Schema.h"
#include "books/users/Users.h"
#include "platform/value/Error.h"
#include "tests/books/TinyBook.h"

namespace {

constexpr const char* kPassword = "correct horse 7";

// A book file of the tiny book's base data, removed with this object.
class UserBook {
 public:
  UserBook()
      : path_(std::filesystem::temp_directory_path() / ("users_test_" + std::to_string(getpid()) + ".db")) {
    Remove();
    books::database::Connection connection = books::schema::CreateBook(path_);
    books::test::WriteTinyBaseData(connection);
  }
  UserBook(const UserBook&) = delete;
  UserBook& operator=(const UserBook&) = delete;
  ~UserBook() { Remove(); }

  const std::filesystem::path& Path() const { return path_; }
  std::string Rows(std::string_view sql) const {
    books::database::Connection connection =
        books::schema::OpenBook(path_, books::database::Access::kReadOnly);
    return books::test::Rows(connection, sql);
  }
  void Run(std::string_view sql) const {
    books::database::Connection connection =
        books::schema::OpenBook(path_, books::database::Access::kReadWrite);
    connection.Execute(sql);
  }

 private:
  void Remove() const {
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(path_.string() + suffix);
  }

  std::filesystem::path path_;
};

std::string MessageOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.Number(), platform::ErrorNumber::kBadArgument);
    return error.Description();
  }
  return "";
}

// "5 01 whole, 4 01.02"
std::string RightsOf(const UserBook& book, const std::string& user) {
  std::string text;
  for (const books::UserRight& right : books::ListRights(book.Path(), user)) {
    if (!text.empty()) text += ", ";
    text += std::to_string(right.dataType) + " " + (right.number.empty() ? "all" : right.number) +
            (right.whole ? " whole" : "");
  }
  return text;
}

TEST(Users, PasswordRules) {
  struct Case {
    std::string name;
    std::string user;
    std::string password;
    std::string expected;  // a piece of the message; empty: accepted
  };
  const std::vector<Case> cases = {
      {"ten characters", "li", "abcde12345", ""},
      {"Chinese", "li", "春眠不觉晓处处闻啼鸟", ""},
      {"two hundred", "li", "abcde" + std::string(195, 'x'), ""},
      {"nine characters", "li", "abcde1234", "at least 10"},
      {"nine Chinese characters", "li", "春眠不觉晓处处闻啼", "at least 10"},
      {"empty", "li", "", "at least 10"},
      {"too long", "li", "abcde" + std::string(196, 'x'), "at most 200"},
      {"digits", "li", "12345678901", "only digits"},
      {"repeated", "li", "abababababab", "at least 5 different"},
      {"the name in it", "WangMin", "wangmin-2026", "holds the user's name"},
      {"a line end", "li", "abcde\n12345", "control character"},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    const std::string message = MessageOf([&] { books::CheckPasswordRules(each.user, each.password); });
    EXPECT_EQ(message.empty(), each.expected.empty()) << message;
    EXPECT_NE(message.find(each.expected), std::string::npos) << message;
  }
}

TEST(Users, AddAndLogIn) {
  const UserBook book;
  const books::UserAccount added = books::AddUser(book.Path(), "王敏", kPassword, false);
  EXPECT_EQ(added.name, "王敏");
  EXPECT_TRUE(added.hasPassword);
  const std::string hash = book.Rows("SELECT password_hash FROM book_user");
  EXPECT_EQ(hash.find("$argon2id$"), 0U) << hash;
  EXPECT_EQ(hash.find(kPassword), std::string::npos);

  const auto login = books::CheckLogin(book.Path(), "王敏", kPassword);
  ASSERT_TRUE(login.has_value());
  EXPECT_EQ(login->id, added.id);
  EXPECT_FALSE(books::CheckLogin(book.Path(), "王敏", "correct horse 8"));
  EXPECT_FALSE(books::CheckLogin(book.Path(), "李强", kPassword));
  books::SetDisabled(book.Path(), "王敏", true);
  EXPECT_FALSE(books::CheckLogin(book.Path(), "王敏", kPassword));
  books::SetDisabled(book.Path(), "王敏", false);
  books::SetPassword(book.Path(), "王敏", "battery staple 9");
  EXPECT_FALSE(books::CheckLogin(book.Path(), "王敏", kPassword));
  EXPECT_TRUE(books::CheckLogin(book.Path(), "王敏", "battery staple 9"));
}

TEST(Users, Refusals) {
  const UserBook book;
  books::AddUser(book.Path(), "Li", kPassword, true);
  struct Case {
    std::string name;
    std::function<void()> action;
    std::string expected;
  };
  const std::vector<Case> cases = {
      {"name twice", [&] { books::AddUser(book.Path(), "LI", kPassword, false); },
       "there is a user LI already"},
      {"empty name", [&] { books::AddUser(book.Path(), "", kPassword, false); }, "is not empty"},
      {"blank at the end", [&] { books::AddUser(book.Path(), "Wang ", kPassword, false); }, "begin or end"},
      {"a semicolon", [&] { books::AddUser(book.Path(), "a;b", kPassword, false); }, "none of , ; ="},
      {"weak password", [&] { books::AddUser(book.Path(), "Wang", "short", false); }, "too short"},
      {"unknown user", [&] { books::SetPassword(book.Path(), "Wang", kPassword); }, "no user Wang"},
      {"unknown user's rights", [&] { books::ListRights(book.Path(), "Wang"); }, "no user Wang"},
      {"unknown class",
       [&] {
         books::GrantRight(book.Path(), {"Li", 9, "01"});
       },
       "no class 9"},
      {"unknown number",
       [&] {
         books::GrantRight(book.Path(), {"Li", 5, "77"});
       },
       "no number 77"},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    const std::string message = MessageOf(each.action);
    EXPECT_NE(message.find(each.expected), std::string::npos) << message;
  }
  EXPECT_EQ(books::ListUsers(book.Path()).size(), 1U);
}

// The clause of the reports looks for an id as a piece of the list.
TEST(Users, NoIdIsAPieceOfAnother) {
  const UserBook book;
  book.Run("INSERT INTO book_user (id, name) VALUES (1, 'first'), (12, 'second')");
  const std::int32_t third = books::AddUser(book.Path(), "third", kPassword, false).id;
  const std::int32_t fourth = books::AddUser(book.Path(), "fourth", kPassword, false).id;
  const std::vector<std::string> ids = {"1", "12", std::to_string(third), std::to_string(fourth)};
  for (std::size_t i = 2; i < ids.size(); ++i) {
    for (std::size_t j = 0; j < ids.size(); ++j) {
      if (i == j) continue;
      EXPECT_EQ(ids[i].find(ids[j]), std::string::npos) << ids[i] << " " << ids[j];
    }
  }
}

TEST(Users, Rights) {
  const UserBook book;
  books::AddUser(book.Path(), "Li", kPassword, true);
  const std::string id = std::to_string(books::AddUser(book.Path(), "Wang", kPassword, true).id);
  EXPECT_EQ(RightsOf(book, "Wang"), "");
  // 01 holds 01.01 with two items, and two items more.
  EXPECT_EQ(books::GrantRight(book.Path(), {"Wang", 4, "01.01"}), 3);
  EXPECT_EQ(books::GrantRight(book.Path(), {"Wang", 4, "01.01.001"}), 0);
  EXPECT_EQ(RightsOf(book, "Wang"), "4 01.01 whole");
  EXPECT_EQ(books::GrantRight(book.Path(), {"Wang", 4, "01"}), 3);
  EXPECT_EQ(RightsOf(book, "Wang"), "4 01 whole");
  EXPECT_EQ(books::GrantRight(book.Path(), {"Wang", 5, ""}), 3);
  EXPECT_EQ(books::GrantRight(book.Path(), {"Li", 5, "02"}), 1);
  EXPECT_EQ(RightsOf(book, "Wang"), "4 01 whole, 5 all whole");
  EXPECT_EQ(RightsOf(book, "Li"), "5 02");
  EXPECT_EQ(book.Rows("SELECT COUNT(*) FROM base_data WHERE class_id = 5 AND right_users = '" + id + "'"),
            "2");

  EXPECT_EQ(books::WithdrawRight(book.Path(), {"Wang", 4, "01.01.001"}), 1);
  EXPECT_EQ(RightsOf(book, "Wang"), "4 01, 4 01.01, 4 01.01.002, 4 01.02, 4 01.03, 5 all whole");
  EXPECT_EQ(books::WithdrawRight(book.Path(), {"Wang", 5, ""}), 3);
  EXPECT_EQ(RightsOf(book, "Li"), "5 02");
}

TEST(Users, TheLastRightOfAClassStays) {
  const UserBook book;
  books::AddUser(book.Path(), "Li", kPassword, true);
  books::GrantRight(book.Path(), {"Li", 5, "02"});
  EXPECT_NE(MessageOf([&] {
              books::WithdrawRight(book.Path(), {"Li", 5, "02"});
            }).find("open to all users"),
            std::string::npos);
  EXPECT_EQ(RightsOf(book, "Li"), "5 02");
  EXPECT_EQ(
      books::WithdrawRight(book.Path(), {.user = "Li", .dataType = 5, .number = "02", .mayOpenClass = true}),
      1);
  EXPECT_EQ(RightsOf(book, "Li"), "");
}

TEST(Users, ListedByName) {
  const UserBook book;
  books::AddUser(book.Path(), "b", kPassword, true);
  books::AddUser(book.Path(), "A", kPassword, false);
  books::SetRestricted(book.Path(), "A", true);
  books::SetDisabled(book.Path(), "b", true);
  std::string text;
  for (const books::UserAccount& each : books::ListUsers(book.Path())) {
    text += each.name + (each.restricted ? " restricted" : "") + (each.disabled ? " disabled" : "") + "\n";
  }
  EXPECT_EQ(text, "A restricted\nb restricted disabled\n");
}

}  // namespace
