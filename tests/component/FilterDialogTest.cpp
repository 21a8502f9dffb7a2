// The dialog family that brings its own buttons, on the filter dialog of the over and short stock report.
#include "component/filter/frmFirter10414.h"
#include "component/frame/MParse.h"
#include "tests/component/ComponentTest.h"
#include "tests/component/FilterControls.h"

namespace component {
namespace {

using platform::ComboBox;
using platform::Form;
using platform::MakeRef;
using platform::OptionButton;
using platform::Ref;
using platform::TextBox;
using platform::UserInput;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FilterDialogTest : public ComponentTest {
 protected:
  FilterDialogTest() {
    ServeFilterControls(desk);
    dialog->SetRptID(10414);
  }

  void ShowWith(FakeScreen::Script script) {
    desk.screen.scripts.push_back(std::move(script));
    dialog->Show();
  }
  template <class C>
  C& Field(std::string_view id) const {
    return dynamic_cast<C&>(*dialog->Find(id));
  }
  std::string Texts() const {
    std::string texts;
    for (const char* id : {"txtItem(0)", "txtItem(1)", "txtItem(2)", "txtItem(3)"}) {
      texts += Field<TextBox>(id).Text() + "|";
    }
    return texts;
  }

  Ref<frmFirter10414> dialog = MakeRef<frmFirter10414>();
};

TEST_F(FilterDialogTest, TheFirstActivationSetsTheDialogUp) {
  ShowWith([&](Form& form, UserInput&) {
    EXPECT_EQ(form.Caption(), "过滤");
    EXPECT_EQ(form.Find("cmdOK")->Caption(), "确定(&O)");
    EXPECT_EQ(form.Find("cmdCacel")->Caption(), "取消(&E)");
    EXPECT_EQ(Spell(dialog->Result()), "{OK: False}") << "from the moment it is loaded";
    const std::vector<std::string> setUp = {"control PageVisible(1s, False)",
                                            "control PageVisible(2s, False)",
                                            "control InitFilter('商品超储短缺表', 10414)"};
    EXPECT_EQ(desk.Lines("control "), setUp);
    form.Activate();
    EXPECT_EQ(desk.Lines("control "), setUp) << "later activations do nothing";
    EXPECT_EQ(form.FirstEmbedded()->Id(), "TOVRptFilter");
  });
}

TEST_F(FilterDialogTest, FieldsLabelsAndDefaults) {
  ShowWith([&](Form& form, UserInput&) {
    struct Row {
      const char* id;
      const char* caption;
      const char* value;
    };
    for (const Row& row : {Row{"lbl_txtItem(0)", "商品代码:", "empty"}, Row{"lbl_txtItem(1)", "至:", "empty"},
                           Row{"lbl_txtItem(2)", "仓库代码:", "empty"}, Row{"lbl_txtItem(3)", "至:", "empty"},
                           Row{"lbl_cboSort", "排序:", "empty"}, Row{"OptSortD", "升序", "True"},
                           Row{"OptSortA", "降序", "False"}}) {
      SCOPED_TRACE(row.id);
      ASSERT_NE(form.Find(row.id), nullptr);
      EXPECT_EQ(form.Find(row.id)->Caption(), row.caption);
      EXPECT_EQ(Spell(form.Find(row.id)->Value()), row.value);
    }
    EXPECT_EQ(Texts(), "||||");
    EXPECT_EQ(form.Find("txtItem(4)"), nullptr);
    EXPECT_EQ(form.Find("cmdItem(4)"), nullptr);

    const auto& sort = Field<ComboBox>("cboSort");
    const std::string blanks(50, ' ');
    std::vector<std::string> entries;
    for (const ComboBox::Entry& entry : sort.Entries()) entries.push_back(entry.text);
    EXPECT_THAT(entries, ElementsAre("无" + blanks + "|FItemNumber", "最高库存" + blanks + "|FMostQty",
                                     "最低库存" + blanks + "|FLowerQty", "结存数量" + blanks + "|FQty",
                                     "超储短缺数量" + blanks + "|FOverQty"));
    EXPECT_EQ(sort.ListIndex(), 0);
  });
}

TEST_F(FilterDialogTest, ConfirmingCollectsTheFilter) {
  struct Row {
    const char* name;
    FakeScreen::Script fill;
    const char* filter;
  };
  const Row rows[] = {
      {"all fields empty", [](Form&, UserInput&) {},
       "{BItemNumber: '', EItemNumber: '', BStockNumber: '', EStockNumber: '', cboSort: '0', OptSortD: "
       "'True', "
       "OptSortA: 'False', UserID: 12, OK: True, InvoiceStyle: 0, ShowTypeValue: '', OrderBy: 'FItemNumber "
       "ASC ', "
       "RptID: 10414s}"},
      {"everything filled",
       [](Form&, UserInput& user) {
         user.Set("txtItem(0)", "09");
         user.Set("txtItem(1)", "01");
         user.Set("txtItem(2)", " S1 ");
         user.Set("txtItem(3)", "S2");
         user.Set("cboSort", 4);
         user.Click("OptSortA");
       },
       "{BItemNumber: '09', EItemNumber: '01', BStockNumber: ' S1 ', EStockNumber: 'S2', cboSort: '4', "
       "OptSortD: "
       "'False', OptSortA: 'True', UserID: 12, OK: True, InvoiceStyle: 0, ShowTypeValue: '', OrderBy: "
       "'FOverQty DESC "
       "', RptID: 10414s}"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    dialog = MakeRef<frmFirter10414>();
    dialog->SetRptID(99);
    ProcessState::Get().props.clear();
    ShowWith([&](Form& form, UserInput& user) {
      row.fill(form, user);
      user.Click("cmdOK");
      EXPECT_FALSE(form.IsVisible());
      EXPECT_TRUE(form.IsLoaded()) << "hidden, not unloaded";
    });
    EXPECT_EQ(Spell(dialog->Result()), row.filter);
    EXPECT_EQ(GetPropsItem("UserID"), "12") << "the session's text is parsed afresh";
    EXPECT_EQ(desk.Count("ICCalFlag"), 0) << "this dialog checks no cost";
  }
}

TEST_F(FilterDialogTest, TheFilterIsTheControlsOwnDictionary) {
  const Ref<platform::Dictionary> collected = Keys({{"MyKey", 5}, {"UserID", 1}});
  ShowWith([&](Form& form, UserInput& user) {
    FilterControl::In<SchemeControl>(form).filterResult = collected;
    user.Click("cmdOK");
  });
  EXPECT_EQ(dialog->Result(), collected);
  EXPECT_EQ(Spell(collected),
            "{MyKey: 5, UserID: 12, OK: True, InvoiceStyle: 0, ShowTypeValue: '', OrderBy: "
            "'FItemNumber ASC ', RptID: 10414s}");
}

TEST_F(FilterDialogTest, CancellingAndClosingLeaveNoFilter) {
  ShowWith([](Form&, UserInput& user) {
    user.Set("txtItem(0)", "01");
    user.Click("cmdCacel");
  });
  EXPECT_EQ(Spell(dialog->Result()), "{OK: False}");
  EXPECT_TRUE(dialog->IsLoaded());
  EXPECT_EQ(desk.Count("FilterResult"), 0);

  dialog = MakeRef<frmFirter10414>();
  ShowWith([](Form& form, UserInput&) { form.CloseByUser(); });
  EXPECT_EQ(Spell(dialog->Result()), "{OK: False}");
}

TEST_F(FilterDialogTest, CancellingAfterConfirmingTurnsTheSameFilterOff) {
  ShowWith([](Form&, UserInput& user) { user.Click("cmdOK"); });
  const Ref<platform::Dictionary> filter = dialog->Result();
  ShowWith([](Form&, UserInput& user) { user.Click("cmdCacel"); });
  EXPECT_EQ(dialog->Result(), filter);
  EXPECT_EQ(Spell(filter->Value("OK")), "False");
}

TEST_F(FilterDialogTest, AnErrorWhileConfirmingLeavesThroughTheShowing) {
  struct Row {
    const char* name;
    FakeScreen::Script confirm;
    const char* error;
  };
  const Row rows[] = {
      {"the control fails",
       [](Form& form, UserInput& user) {
         FilterControl::In<SchemeControl>(form).failing = "FilterResult";
         user.Click("cmdOK");
       },
       "control failed"},
      {"no user in the session",
       [this](Form&, UserInput& user) {
         desk.session->Set("PropsString", "Server=s;");
         user.Click("cmdOK");
       },
       "the session text holds no key 'UserID'"},
      {"no sort entry",
       [](Form&, UserInput& user) {
         user.Set("cboSort", -1);
         user.Click("cmdOK");
       },
       "no sort entry is chosen"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    desk.session->Set("PropsString", "UserID=12;");
    dialog = MakeRef<frmFirter10414>();
    EXPECT_EQ(Raised([&] { ShowWith(row.confirm); }), row.error);
    EXPECT_FALSE(dialog->IsVisible());
  }
}

TEST_F(FilterDialogTest, SavingAskedByTheControlWritesEveryFieldAsText) {
  ShowWith([&](Form& form, UserInput& user) {
    user.Set("txtItem(3)", "S9");
    user.Set("cboSort", 2);
    desk.journal.clear();
    FilterControl::In<SchemeControl>(form).events.RaiseWith("SaveScheme", "mine");
    EXPECT_THAT(desk.journal, ElementsAre("control WriteValue('mine', 'BItemNumber', '')",
                                          "control WriteValue('mine', 'EItemNumber', '')",
                                          "control WriteValue('mine', 'BStockNumber', '')",
                                          "control WriteValue('mine', 'EStockNumber', 'S9')",
                                          "control WriteValue('mine', 'cboSort', '2')",
                                          "control WriteValue('mine', 'OptSortD', 'True')",
                                          "control WriteValue('mine', 'OptSortA', 'False')"));
  });
}

TEST_F(FilterDialogTest, LoadingTakesWhatItCan) {
  struct Row {
    const char* name;
    Ref<platform::Dictionary> scheme;
    std::vector<std::string> unreadable;
    const char* texts;
    int sort;
    bool ascending, descending;
  };
  const Row rows[] = {
      {"a whole scheme",
       Keys({{"BItemNumber", "a"},
             {"EItemNumber", "b"},
             {"BStockNumber", "c"},
             {"EStockNumber", "d"},
             {"cboSort", "3"},
             {"OptSortD", "False"},
             {"OptSortA", "True"}}),
       {},
       "a|b|c|d|",
       3,
       false,
       true},
      {"numbers for booleans", Keys({{"OptSortD", "0"}, {"OptSortA", "-1"}}), {}, "||||", 0, false, true},
      {"fields that fail stay as they are",
       Keys({{"BItemNumber", "a"},
             {"EStockNumber", "d"},
             {"cboSort", "99"},
             {"OptSortD", "perhaps"},
             {"OptSortA", "False"}}),
       {"EItemNumber", "BStockNumber"},
       "a|old|old|d|",
       1,
       true,
       false},
      {"a scheme without keys", Keys({}), {}, "||||", 0, false, false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    dialog = MakeRef<frmFirter10414>();
    ShowWith([&](Form& form, UserInput& user) {
      for (const char* id : {"txtItem(0)", "txtItem(1)", "txtItem(2)", "txtItem(3)"}) user.Set(id, "old");
      user.Set("cboSort", 1);
      auto& control = FilterControl::In<SchemeControl>(form);
      control.scheme = row.scheme;
      control.unreadable = row.unreadable;
      desk.journal.clear();
      control.events.RaiseWith("LoadScheme", "mine");
      EXPECT_EQ(Texts(), row.texts);
      EXPECT_EQ(Field<ComboBox>("cboSort").ListIndex(), row.sort);
      EXPECT_EQ(Field<OptionButton>("OptSortD").IsOn(), row.ascending);
      EXPECT_EQ(Field<OptionButton>("OptSortA").IsOn(), row.descending);
      EXPECT_EQ(desk.journal.front(), "control ReadValue('mine', 'BItemNumber')");
      EXPECT_EQ(desk.journal.back(), "control ReadValue('mine', 'OptSortA')");
      EXPECT_EQ(desk.journal.size(), 7U);
    });
  }
}

TEST_F(FilterDialogTest, ResettingClearsEveryField) {
  ShowWith([&](Form& form, UserInput& user) {
    for (const char* id : {"txtItem(0)", "txtItem(1)", "txtItem(2)", "txtItem(3)"}) user.Set(id, "x");
    user.Set("cboSort", 3);
    user.Click("OptSortA");
    FilterControl::In<SchemeControl>(form).events.RaiseWith("ResetFields");
    EXPECT_EQ(Texts(), "||||");
    EXPECT_EQ(Field<ComboBox>("cboSort").ListIndex(), 0);
    EXPECT_TRUE(Field<OptionButton>("OptSortD").IsOn());
    EXPECT_FALSE(Field<OptionButton>("OptSortA").IsOn());
  });
}

TEST_F(FilterDialogTest, AnActivatedSchemeIsAppliedAndANoticeIgnored) {
  ShowWith([&](Form& form, UserInput&) {
    auto& events = FilterControl::In<SchemeControl>(form).events;
    desk.journal.clear();
    events.RaiseWith("SchemeNotice", 1);
    EXPECT_THAT(desk.journal, IsEmpty());
    events.RaiseWith("SchemeActivated");
    EXPECT_THAT(desk.journal, ElementsAre("control ApplyScheme()"));
  });
}

}  // namespace
}  // namespace component
