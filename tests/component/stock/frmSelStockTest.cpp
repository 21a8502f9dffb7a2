// The tree of warehouses: what ticking does to the nodes around, and what the two texts say of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/stock/frmSelStock.h"
#include "tests/component/stock/StockTest.h"

namespace component {
namespace {

using platform::Form;
using platform::MakeRef;
using platform::Ref;
using platform::UserInput;

class FrmSelStockTest : public StockTest {
 protected:
  // A group 1 of 11 and 12, which is disabled, and a warehouse 2 beside it.
  static Ref<platform::Recordset> Stocks() {
    return TextRows({"FItemID", "FParentID", "FNumber", "FName", "FDetail", "FDeleted"},
                    {{"1", "0", "01", "总仓", "0", "0"},
                     {"11", "1", "01.01", "东仓", "1", "0"},
                     {"12", "1", "01.02", "西仓", "1", "1"},
                     {"2", "0", "02", "门店", "1", "0"}});
  }
  Ref<frmSelStock> Show(const StockScope& chosen, FakeScreen::Script script) {
    Ref<frmSelStock> dialog = MakeRef<frmSelStock>(Stocks(), chosen);
    desk.screen.scripts.push_back(std::move(script));
    dialog->Show();
    return dialog;
  }
};

TEST_F(FrmSelStockTest, TheTextsTellWhatIsTicked) {
  struct Row {
    const char* name;
    std::vector<std::string> clicks;
    const char* numbers;
    const char* names;
    int state;
  };
  const Row rows[] = {
      {"nothing", {}, "", "", 0},
      {"a leaf with a sibling ticks the group", {"K11"}, "(1,11)", "01.01-东仓", 2},
      {"all children stand as the group", {"K11", "K12"}, "(1,11,12)", "01-总仓", 2},
      {"a group ticks what is in it", {"K1"}, "(1,11,12)", "01-总仓", 2},
      {"one child less leaves the group ticked", {"K1", "K12"}, "(1,11)", "01.01-东仓", 2},
      {"the last child takes the group along", {"K1", "K12", "K11"}, "", "", 0},
      {"every node", {"K1", "K2"}, "(1,11,12,2)", "01-总仓,02-门店", 1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const Ref<frmSelStock> dialog = Show({}, [&](Form&, UserInput& user) {
      for (const std::string& node : row.clicks) user.ClickNode("tree", node);
      user.Click("cmdOK");
    });
    EXPECT_TRUE(dialog->IsOk());
    EXPECT_EQ(dialog->Chosen().numbers, row.numbers);
    EXPECT_EQ(dialog->Chosen().names, row.names);
    EXPECT_EQ(dialog->ScopeState(), row.state);
  }
}

TEST_F(FrmSelStockTest, CancelKeepsTheEarlierChoice) {
  for (const char* way : {"cmdCancel", ""}) {
    const Ref<frmSelStock> dialog =
        Show({.numbers = "(2)", .names = "02-门店"}, [&](Form& form, UserInput& user) {
          user.Click("cmdSelAll");
          if (*way == '\0') return form.CloseByUser();
          user.Click(way);
        });
    EXPECT_FALSE(dialog->IsOk());
    EXPECT_EQ(dialog->Chosen().numbers, "(2)");
    EXPECT_EQ(dialog->Chosen().names, "02-门店");
  }
}

TEST_F(FrmSelStockTest, AnEarlierChoiceIsFoundAsPlainText) {
  Show({.numbers = "(12)", .names = ""}, [](Form& form, UserInput&) {
    const platform::TreeView& tree = *form.FirstTree();
    // 1 and 2 are found in "12" too: sets are searched with no regard to the commas.
    for (const char* key : {"K1", "K2", "K12"}) EXPECT_TRUE(tree.Find(key)->checked) << key;
    EXPECT_FALSE(tree.Find("K11")->checked);
    EXPECT_EQ(tree.Find("K12")->color, 255U) << "disabled, and still to be chosen";
    EXPECT_EQ(tree.Find("K11")->color, 0U);
  });
}

TEST_F(FrmSelStockTest, SelectAllAndClearAll) {
  const Ref<frmSelStock> dialog = Show({}, [](Form& form, UserInput& user) {
    user.Click("cmdSelAll");
    EXPECT_TRUE(form.FirstTree()->Find("K12")->checked);
    user.Click("cmdQXAll");
    user.Click("cmdOK");
  });
  EXPECT_EQ(dialog->Chosen().numbers, "");
  EXPECT_TRUE(dialog->FirstTree()->Nodes().empty()) << "the tree is emptied as the dialog ends";
}

TEST_F(FrmSelStockTest, ABadRowEndsTheTreeThere) {
  const Ref<frmSelStock> dialog =
      MakeRef<frmSelStock>(TextRows({"FItemID", "FParentID", "FNumber", "FName", "FDetail", "FDeleted"},
                                    {{"1", "0", "01", "总仓", "1", "0"},
                                     {"5", "99", "05", "孤仓", "1", "0"},
                                     {"2", "0", "02", "门店", "1", "0"}}),
                           StockScope{});
  desk.screen.scripts.push_back(
      [](Form& form, UserInput&) { EXPECT_EQ(form.FirstTree()->Nodes().size(), 1U); });
  dialog->Show();
}

}  // namespace
}  // namespace component
