// Values that the process shares, the profile's word on numbers, the usage record and the language.
#include "component/frame/MMTS.h"
#include "component/frame/VEZPublic.h"
#include "tests/component/ComponentTest.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::Form;
using platform::MakeRef;
using platform::Object;
using platform::Ref;
using platform::Variant;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ProcessValueTest : public ComponentTest {};

TEST_F(ProcessValueTest, AValueComesFromTheStore) {
  store->Set("AppType", 4);
  store->Set("Empty", Variant());
  EXPECT_EQ(Spell(GetProcessValue("AppType")), "4");
  EXPECT_EQ(Spell(GetProcessValue("apptype", 2)), "4") << "keys meet in any case";
  EXPECT_EQ(Spell(GetProcessValue("Empty", 2)), "empty") << "an empty value is a value";
  EXPECT_EQ(Spell(GetProcessValue("Other", 2)), "2");
  EXPECT_EQ(Spell(GetProcessValue("Other")), "empty");
}

TEST_F(ProcessValueTest, ANewValueIsWrittenIntoTheStore) {
  SetProcessValue("NeedAuthrize", true);
  SetProcessValue("AppType", 1);
  SetProcessValue("APPTYPE", 4);
  EXPECT_EQ(Spell(store), "{NeedAuthrize: True, AppType: 4}");
}

TEST_F(ProcessValueTest, AProcessWithoutAStoreGoesByDefaults) {
  platform::SetProcessStore({});
  SetProcessValue("AppType", 4);
  EXPECT_EQ(Spell(GetProcessValue("AppType", 7)), "7");
  EXPECT_EQ(Spell(GetProcessValue("AppType")), "empty");
  EXPECT_EQ(GetAppType(), 2);
  EXPECT_EQ(GetIndustryType(), 0);
  EXPECT_TRUE(GetGLAndICUnite());
}

TEST_F(ProcessValueTest, TheNamedValuesHaveDefaultsAndConvert) {
  EXPECT_EQ(GetAppType(), 2);
  EXPECT_EQ(GetIndustryType(), 0);
  EXPECT_TRUE(GetGLAndICUnite());
  store->Set("AppType", "4");
  store->Set("IndustryType", std::int16_t{1});
  store->Set("GLAndICUnite", 0);
  EXPECT_EQ(GetAppType(), 4);
  EXPECT_EQ(GetIndustryType(), 1);
  EXPECT_FALSE(GetGLAndICUnite());
}

TEST_F(ProcessValueTest, NumbersAreLongUnlessTheProfileSaysOtherwise) {
  struct Row {
    const char* name;
    Variant profile;
    bool isLong;
  };
  const Row rows[] = {
      {"1", 1, true},
      {"1 as text", "1", true},
      {"not set", platform::Null(), true},
      {"no number", "yes", true},
      {"0", 0, false},
      {"0 as text", "0", false},
      {"2", 2, false},
      {"empty", Variant(), false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    desk.Answer("TOVEBSBase.SystemProfile", "GetProfile", row.profile);
    EXPECT_EQ(ReadIsLongNumber(), row.isLong);
  }
  desk.Fail("TOVEBSBase.SystemProfile", "GetProfile", "no profile");
  EXPECT_TRUE(ReadIsLongNumber()) << "unreadable";
  desk.Withdraw("TOVEBSBase.SystemProfile");
  EXPECT_TRUE(ReadIsLongNumber()) << "not installed";
}

TEST_F(ProcessValueTest, TheProfileIsAskedWithThePropsAndTheKey) {
  ReadIsLongNumber();
  EXPECT_THAT(desk.Lines("SystemProfile"),
              ElementsAre("new TOVEBSBase.SystemProfile",
                          "call TOVEBSBase.SystemProfile.GetProfile('UserID=12;', 'IC', 'UseShortNumber')",
                          "end TOVEBSBase.SystemProfile"));
}

TEST_F(ProcessValueTest, AUsageRecordIsWrittenAndNeverStopsAReport) {
  desk.Answer("VEZ_APFC.FrameData", "WriteMGLog", {});
  WriteUsageLog("R302", "查询");
  EXPECT_THAT(desk.Lines("FrameData"),
              ElementsAre("new VEZ_APFC.FrameData", "put VEZ_APFC.FrameData.PropString('UserID=12;')",
                          "call VEZ_APFC.FrameData.WriteMGLog('R302', '查询')", "end VEZ_APFC.FrameData"));
  desk.Fail("VEZ_APFC.FrameData", "WriteMGLog", "disk full");
  EXPECT_EQ(Raised([] { WriteUsageLog("a", "b"); }), "nothing raised");
  desk.Withdraw("VEZ_APFC.FrameData");
  EXPECT_EQ(Raised([] { WriteUsageLog("a", "b"); }), "nothing raised");
  EXPECT_THAT(desk.Lines("ask "), IsEmpty());
}

TEST_F(ProcessValueTest, TextsPassThroughUnchanged) {
  for (const char* text : {"", "过滤", "确定(&O)", " 不能选择非明细科目 ", "a|b$"})
    EXPECT_EQ(ResString(text), text);
}

TEST_F(ProcessValueTest, TheLanguageIsFixedAndOtherKeysComeFromTheProps) {
  struct Row {
    const char* name;
    const char* key;
    const char* value;
  };
  desk.session->Set("PropsString", "UserID=12;Server=s1;LANGUAGE=eng;Last=z");
  for (const Row& row : {Row{"the language", "LANGUAGE", "chs"}, Row{"in small letters", "language", "chs"},
                         Row{"another key", "Server", "s1"}, Row{"the last key", "Last", "z"},
                         Row{"an unknown key", "Colour", ""}}) {
    SCOPED_TRACE(row.name);
    desk.journal.clear();
    EXPECT_EQ(GetLanguage(row.key), row.value);
    EXPECT_EQ(desk.journal.empty(), std::string(row.value) == "chs") << "the language asks nobody";
  }
}

TEST_F(ProcessValueTest, ChineseFormsLoadNoResources) {
  const Ref<Object> form(MakeRef<Form>("frmAny"));
  for (const char* language : {"", "chs", "CHS"}) {
    SCOPED_TRACE(language);
    ProcessState::Get().language = language;
    Ref<Dictionary> result;
    LoadFormResources(form, result, "frmAny");
    EXPECT_FALSE(result);
    EXPECT_THAT(desk.journal, IsEmpty());
    EXPECT_EQ(ProcessState::Get().language, language) << "no run fills the language";
  }
}

TEST_F(ProcessValueTest, AnotherLanguageGoesToTheLoader) {
  const Ref<Object> form(MakeRef<Form>("frmAny"));
  ProcessState::Get().language = "eng";
  desk.On("TOVFrmRes.FrmResLoader", "LoadFrmResStrings", [](std::span<Variant> arguments) {
    EXPECT_EQ(Spell(arguments), "('UserID=12;', 'eng', <frmAny>, 'frmAny', {NeedMLColumnHeaders: True})");
    arguments[4] = Keys({{"Caption", "Filter"}});
    return Variant(MakeRef<platform::Vector>());
  });
  Ref<Dictionary> result;
  LoadFormResources(form, result, "frmAny");
  EXPECT_EQ(Spell(result), "{Caption: 'Filter'}") << "the loader may hand back another dictionary";

  desk.Answer("TOVFrmRes.FrmResLoader", "LoadFrmResStrings", Keys({}));
  EXPECT_EQ(RaisedNumber([&] { LoadFormResources(form, result, "frmAny"); }),
            platform::ErrorNumber::kTypeMismatch)
      << "what comes back is a list";
}

}  // namespace
}  // namespace component
