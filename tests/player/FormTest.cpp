// What a script does in forms, against the small forms of TestForms.h.
#include <gtest/gtest.h>

#include "tests/player/Played.h"

namespace {

using player_tests::PlayedFrom;

// The lines of a form's showing, the last one the step's.
std::vector<std::string> Show(const std::string& form, const std::string& actions) {
  return PlayedFrom(2, R"j({"new":"S","class":"Test.Shower"},{"dialog":[)j" + actions +
                           R"j(]},{"call":"S","method":"Show","args":[")j" + form + R"j("]})j");
}

struct Case {
  const char* name;
  const char* form;
  const char* actions;
  std::vector<std::string> between;  // what is written between the form's line and its end
  const char* step = R"j({"step":2})j";
};

void Check(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const std::string form = std::string("frm") + c.form;
    std::vector<std::string> expected = {R"j({"form":")j" + form + R"j(","caption":")j" +
                                         (form == "frmPlain" ? "after" : "") + R"j("})j"};
    expected.insert(expected.end(), c.between.begin(), c.between.end());
    expected.push_back(R"j({"closed":")j" + form + R"j("})j");
    expected.emplace_back(c.step);
    EXPECT_EQ(Show(c.form, c.actions), expected);
  }
}

// The log of the events, read from the state.
std::string LogOf(const std::vector<std::string>& lines) {
  for (const std::string& line : lines) {
    const std::string key =
        R"j("log":{"kind":"label","value":null,"enabled":true,"visible":true,"caption":")j";
    const std::size_t at = line.find(key);
    if (at == std::string::npos) continue;
    const std::size_t begin = at + key.size();
    return line.substr(begin, line.find('"', begin) - begin);
  }
  return "no state";
}

TEST(PlayerForm, EndsAForm) {
  Check({
      {"by its button, and drops what is left", "Plain", R"j({"click":"cmdOK"},{"click":"nothing"})j", {}},
      {"by closing it", "Plain", R"j({"close":true})j", {}},
      {"when the actions run out", "Plain", "", {R"j({"abandoned":"frmPlain"})j"}},
      {"by an error of its events",
       "Plain",
       R"j({"click":"cmdFail"})j",
       {},
       R"j({"step":2,"raised":"the button fails"})j"},
  });
}

TEST(PlayerForm, RefusesWhatAUserCouldNotDo) {
  Check({
      {"set of a disabled field",
       "Plain",
       R"j({"set":"txtItem(1)","to":"x"},{"close":true})j",
       {R"j({"refused":"txtItem(1)","why":"disabled"})j"}},
      {"click inside a hidden frame",
       "Plain",
       R"j({"click":"chkInside"},{"close":true})j",
       {R"j({"refused":"chkInside","why":"hidden"})j"}},
      {"key, leave and enter",
       "Plain",
       R"j({"key":"F7","on":"txtItem(1)"},{"leave":"txtItem(1)"},{"enter":"chkInside"},{"close":true})j",
       {R"j({"refused":"txtItem(1)","why":"disabled"})j", R"j({"refused":"txtItem(1)","why":"disabled"})j",
        R"j({"refused":"chkInside","why":"hidden"})j"}},
  });
}

TEST(PlayerForm, TellsMistakesOfTheScript) {
  Check({
      {"a control that is not there",
       "Plain",
       R"j({"click":"cmdNone"})j",
       {},
       R"j({"step":2,"raised":"the form frmPlain has no control 'cmdNone'"})j"},
      {"a click on a label",
       "Plain",
       R"j({"click":"log"})j",
       {},
       R"j({"step":2,"raised":"log: a control of kind label cannot be clicked"})j"},
      {"a node that is not there",
       "Plain",
       R"j({"click":"tree","node":"K9"})j",
       {},
       R"j({"step":2,"raised":"tvwStock: the tree has no node 'K9'"})j"},
      {"a form without a filter control",
       "Plain",
       R"j({"control":"reset"})j",
       {},
       R"j({"step":2,"raised":"the form frmPlain has no filter control of the desk"})j"},
      {"buttons of a control that has none",
       "Scheme",
       R"j({"control":"ok"})j",
       {},
       R"j({"step":2,"raised":"the filter control of frmScheme has no buttons of its own"})j"},
      {"a scheme that is not there",
       "Scheme",
       R"j({"control":"load","scheme":"x"})j",
       {},
       R"j({"step":2,"raised":"there is no scheme 'x' of frmScheme"})j"},
      {"notices of a control that has none",
       "Report",
       R"j({"control":"notice"})j",
       {},
       R"j({"step":2,"raised":"the filter control of frmReport has no notices"})j"},
  });
}

TEST(PlayerForm, FiresTheEventsOfAUser) {
  struct EventCase {
    const char* name;
    const char* actions;
    const char* log;
  };
  const EventCase kCases[] = {
      {"shown", "", "activate;"},
      {"a text as a whole", R"j({"set":"txtItem(0)","to":"long text"},)j", "activate;change;"},
      {"a key", R"j({"key":"x","on":"txtItem(0)"},)j", "activate;change;"},
      {"a key that the form swallows", R"j({"key":"'","on":"txtItem(0)"},)j", "activate;"},
      {"a check", R"j({"click":"chkOne"},)j", "activate;check;"},
      {"a check set to what it is", R"j({"set":"chkOne","to":0},)j", "activate;"},
      {"leaving", R"j({"leave":"DtpBDate"},)j", "activate;left;"},
      {"moving on", R"j({"enter":"DtpBDate"},{"enter":"txtItem(0)"},)j", "activate;left;"},
      {"a tree's box", R"j({"click":"tree","node":"K12"},)j", "activate;K12;"},
      {"a tree by its own name", R"j({"click":"tvwStock","node":"K12"},)j", "activate;K12;"},
      {"once more", R"j({"activate":true},)j", "activate;activate;"},
  };
  for (const EventCase& c : kCases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(LogOf(Show("Plain", std::string(c.actions) + R"j({"state":true},{"close":true})j")), c.log);
  }
}

TEST(PlayerForm, WritesItsState) {
  const auto lines =
      Show("Plain", R"j({"set":"cboSort","to":1},{"set":"chkOne","to":1},{"set":"optB","to":true},
      {"set":"DtpBDate","to":{"date":"2024-05-06"}},{"set":"txtItem(0)","to":"01"},{"enter":"cboSort"},{"state":true},{"close":true})j");
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(
      lines[1],
      R"j({"state":{"form":"frmPlain","caption":"after","controls":{)j"
      R"j("txtItem(0)":{"kind":"text","value":"01","enabled":true,"visible":true,"caption":""},)j"
      R"j("txtItem(1)":{"kind":"text","value":"","enabled":false,"visible":true,"caption":""},)j"
      R"j("fraHidden":{"kind":"frame","value":null,"enabled":true,"visible":false,"caption":"more"},)j"
      R"j("chkInside":{"kind":"check","value":0,"enabled":true,"visible":false,"caption":""},)j"
      R"j("chkOne":{"kind":"check","value":1,"enabled":true,"visible":true,"caption":""},)j"
      R"j("optA":{"kind":"option","value":false,"enabled":true,"visible":true,"caption":""},)j"
      R"j("optB":{"kind":"option","value":true,"enabled":true,"visible":true,"caption":""},)j"
      R"j("cboSort":{"kind":"combo","value":"second","enabled":true,"visible":true,"caption":"","items":["first","second"],"index":1},)j"
      R"j("DtpBDate":{"kind":"date","value":{"date":"2024-05-06"},"enabled":true,"visible":true,"caption":""},)j"
      R"j("tree":{"kind":"tree","value":null,"enabled":true,"visible":true,"caption":"","nodes":[)j"
      R"j({"key":"K1","parent":"","text":"all","checked":false,"color":0,"image":"Close"},)j"
      R"j({"key":"K12","parent":"K1","text":"north","checked":false,"color":255,"image":""}]},)j"
      R"j("cmdOK":{"kind":"button","value":null,"enabled":true,"visible":true,"caption":""},)j"
      R"j("cmdFail":{"kind":"button","value":null,"enabled":true,"visible":true,"caption":""},)j"
      R"j("cmdNested":{"kind":"button","value":null,"enabled":true,"visible":true,"caption":""},)j"
      R"j("log":{"kind":"label","value":null,"enabled":true,"visible":true,"caption":"activate;check;change;"}},)j"
      R"j("focus":"cboSort"}})j");
}

TEST(PlayerForm, LeavesTheFocusWhereItIsOnSet) {
  const auto lines = Show(
      "Plain",
      R"j({"set":"txtItem(0)","to":"x"},{"state":true},{"click":"tree","node":"K1"},{"state":true},{"close":true})j");
  ASSERT_EQ(lines.size(), 5u);
  EXPECT_TRUE(lines[1].ends_with(R"j("focus":null}})j")) << lines[1];
  EXPECT_TRUE(lines[2].ends_with(R"j("focus":"tree"}})j")) << lines[2];
}

TEST(PlayerForm, ServesNestedFormsFromTheQueue) {
  EXPECT_EQ(PlayedFrom(
                3, R"j({"new":"S","class":"Test.Shower"},{"dialog":[{"click":"cmdNested"},{"click":"cmdOK"}]},
      {"dialog":[{"click":"cmdOK"}]},{"call":"S","method":"Show","args":["Nested"]},{"call":"S","method":"Show","args":["Plain"]})j"),
            (std::vector<std::string>{
                R"j({"form":"frmPlain","caption":"after"})j", R"j({"form":"frmPlain","caption":"after"})j",
                R"j({"closed":"frmPlain"})j", R"j({"closed":"frmPlain"})j", R"j({"step":3})j",
                R"j({"form":"frmPlain","caption":"after"})j", R"j({"abandoned":"frmPlain"})j",
                R"j({"closed":"frmPlain"})j", R"j({"step":4})j"}));
}

TEST(PlayerForm, RunsTheProgressBox) {
  EXPECT_EQ(
      PlayedFrom(2, R"j({"new":"S","class":"Test.Shower"},{"dialog":[{"click":"cmdOK"}]},
      {"call":"S","method":"Show","args":["Box"]},{"call":"S","method":"Show","args":["Stuck"]},{"call":"S","method":"Show","args":["Plain"]})j"),
      (std::vector<std::string>{
          R"j({"bar":"SetMsg","value":"working"})j", R"j({"bar":"HideProgBar"})j", R"j({"bar":"Unload"})j",
          R"j({"step":2})j", R"j({"bar":"SetMsg","value":"working"})j", R"j({"bar":"HideProgBar"})j",
          R"j({"abandoned":"frmProgBar"})j", R"j({"step":3})j", R"j({"form":"frmPlain","caption":"after"})j",
          R"j({"closed":"frmPlain"})j", R"j({"step":4})j"}));
}

TEST(PlayerForm, AnswersMessageBoxes) {
  EXPECT_EQ(
      PlayedFrom(
          2,
          R"j({"new":"S","class":"Test.Shower"},{"answer":"yes"},{"call":"S","method":"Ask","args":["yesno"]},
      {"call":"S","method":"Ask","args":["yesno"]},{"call":"S","method":"Ask","args":["ok"]},{"call":"S","method":"Point"},
      {"answer":"yes"},{"call":"S","method":"Ask","args":["ok"]})j"),
      (std::vector<std::string>{
          R"j({"message":{"text":"sure?","title":"title","buttons":"yesno","icon":"question","default":"no"},"answer":"yes"})j",
          R"j({"step":2,"value":"yes"})j",
          R"j({"message":{"text":"sure?","title":"title","buttons":"yesno","icon":"question","default":"no"},"answer":"no"})j",
          R"j({"step":3,"value":"no"})j",
          R"j({"message":{"text":"sure?","title":"title","buttons":"ok","icon":"none","default":"ok"},"answer":"ok"})j",
          R"j({"step":4,"value":"ok"})j", R"j({"pointer":"default"})j", R"j({"step":5})j", R"j({"step":6})j",
          R"j({"message":{"text":"sure?","title":"title","buttons":"ok","icon":"none","default":"ok"},"answer":"ok"})j",
          R"j({"step":7,"raised":"the message box 'sure?' has no button 'yes'"})j"}));
}

constexpr const char* kRead =
    R"j({"called":"TOVRptFilterCtl.TOVRptFilter","method":"ReadValue","args":["mine","BItemNumber"]})j";
constexpr const char* kApply =
    R"j({"called":"TOVRptFilterCtl.TOVRptFilter","method":"ApplyScheme","args":[]})j";
constexpr const char* kInfo = R"j({"got":"TOVRptFilterCtl.TOVRptFilter","property":"FilterInfo"})j";
constexpr const char* kResult =
    R"j({"called":"TOVRptFilterCtl.TOVRptFilter","method":"FilterResult","args":[]})j";

std::string Write(const std::string& section, const std::string& value) {
  return R"j({"called":"TOVRptFilterCtl.TOVRptFilter","method":"WriteValue","args":[")j" + section +
         R"j(","BItemNumber",")j" + value + R"j("]})j";
}

TEST(PlayerForm, DrivesTheSchemeControl) {
  Check({
      {"collects for OK",
       "Scheme",
       R"j({"set":"txtItem(0)","to":"01"},{"click":"cmdOK"})j",
       {kInfo, kResult, Write("", "01")},
       R"j({"step":2,"value":{"dictionary":{"BItemNumber":"01"}}})j"},
      {"resets and notices",
       "Scheme",
       R"j({"control":"reset"},{"control":"notice"},{"click":"cmdOK"})j",
       {kInfo, kResult, Write("", "reset+SchemeNotice")},
       R"j({"step":2,"value":{"dictionary":{"BItemNumber":"reset+SchemeNotice"}}})j"},
      {"stores and recalls",
       "Scheme",
       R"j({"set":"txtItem(0)","to":"01"},{"control":"save","scheme":"mine"},{"set":"txtItem(0)","to":"x"},
          {"control":"load","scheme":"mine"},{"click":"cmdOK"})j",
       {Write("mine", "01"), kRead, kApply, kInfo, kResult, Write("", "01")},
       R"j({"step":2,"value":{"dictionary":{"BItemNumber":"01"}}})j"},
      {"yields another result once",
       "Scheme",
       R"j({"control":"result","value":{"nothing":true}},{"click":"cmdOK"})j",
       {kInfo, kResult},
       R"j({"step":2,"value":{"nothing":true}})j"},
      {"raises once",
       "Scheme",
       R"j({"control":"result","raises":"broken"},{"click":"cmdOK"})j",
       {kInfo, kResult},
       R"j({"step":2,"raised":"broken"})j"},
      {"closed", "Scheme", R"j({"close":true})j", {}, R"j({"step":2,"value":"cancelled"})j"},
  });
}

TEST(PlayerForm, RecallsASchemeOfTheScript) {
  EXPECT_EQ(
      PlayedFrom(
          3,
          R"j({"new":"S","class":"Test.Shower"},{"scheme":"Mine","dialog":"FRMSCHEME","values":{"bitemnumber":"07"}},
      {"dialog":[{"control":"load","scheme":"mine"},{"click":"cmdOK"}]},{"call":"S","method":"Show","args":["Scheme"]})j"),
      (std::vector<std::string>{R"j({"form":"frmScheme","caption":""})j", kRead, kApply, kInfo, kResult,
                                Write("", "07"), R"j({"closed":"frmScheme"})j",
                                R"j({"step":3,"value":{"dictionary":{"BItemNumber":"07"}}})j"}));
}

constexpr const char* kFilterResult =
    R"j({"called":"VEZ_GRFC.ReportFilter","method":"FilterResult","args":[]})j";

TEST(PlayerForm, DrivesTheControlWithButtons) {
  Check({
      {"ok",
       "Report",
       R"j({"set":"txtItem(0)","to":"01"},{"control":"ok"})j",
       {kFilterResult},
       R"j({"step":2,"value":{"dictionary":{"BItemNumber":"01"}}})j"},
      {"quick",
       "Report",
       R"j({"set":"txtItem(0)","to":"01"},{"control":"quick"})j",
       {kFilterResult},
       R"j({"step":2,"value":{"dictionary":{"BItemNumber":"01","Quick":"01"}}})j"},
      {"cancel",
       "Report",
       R"j({"control":"cancel"},{"control":"ok"})j",
       {},
       R"j({"step":2,"value":"cancelled"})j"},
      {"closed", "Report", R"j({"close":true})j", {}, R"j({"step":2,"value":"cancelled"})j"},
      {"stores and recalls",
       "Report",
       R"j({"set":"txtItem(0)","to":"01"},{"control":"save","scheme":"s"},{"control":"reset"},{"control":"load","scheme":"s"},{"control":"ok"})j",
       {kFilterResult},
       R"j({"step":2,"value":{"dictionary":{"BItemNumber":"01+LoadQuery"}}})j"},
      {"another result once",
       "Report",
       R"j({"control":"ok","result":{"nothing":true}})j",
       {kFilterResult},
       R"j({"step":2,"value":{"nothing":true}})j"},
      {"raises once",
       "Report",
       R"j({"control":"ok","raises":"broken"})j",
       {kFilterResult},
       R"j({"step":2,"raised":"broken"})j"},
      {"lookup of its own, cancelled",
       "Report",
       R"j({"set":"txtItem(0)","to":"0"},{"control":"lookup","on":"txtItem(0)"},{"control":"ok"})j",
       {R"j({"lookup":{"kind":"ItemLookUp","type":4,"text":"0","filter":""}})j", kFilterResult},
       R"j({"step":2,"value":{"dictionary":{"BItemNumber":"0"}}})j"},
      {"lookup in a field that is off",
       "Report",
       R"j({"control":"lookup","on":"txtItem(1)"},{"control":"cancel"})j",
       {R"j({"refused":"txtItem(1)","why":"disabled"})j"},
       R"j({"step":2,"value":"cancelled"})j"},
  });
  EXPECT_EQ(PlayedFrom(3, R"j({"new":"S","class":"Test.Shower"},{"pick":{"dictionary":{"Number":"09"}}},
      {"dialog":[{"control":"lookup","on":"txtItem(0)"
  },{"control":"ok"}]
  },{"call":"S","method":"Show","args":["Report"]})j"),
            (std::vector<std::string>{R"j({"form":"frmReport","caption":""})j",
                                      R"j({"lookup":{"kind":"ItemLookUp","type":4,"text":"","filter":""}})j",
                                      kFilterResult, R"j({"closed":"frmReport"})j",
                                      R"j({"step":3,"value":{"dictionary":{"BItemNumber":"09"}}})j"}));
}

}  // namespace
