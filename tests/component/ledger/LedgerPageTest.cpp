// The page that takes the ledger's rows, and the merge of recordsets.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/ledger/LedgerPage.h"
#include "platform/rows/RowReader.h"
#include "tests/component/ledger/LedgerDesk.h"

namespace component {
namespace {

using platform::Date;
using platform::Field;
using platform::FieldType;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class LedgerPageTest : public ComponentTest {
 protected:
  static std::string FieldNames(const Recordset& page) {
    std::string names;
    for (const Field& field : page.Fields()) {
      names += field.name + ":" + std::string(platform::ToString(field.type)) +
               (platform::IsTextType(field.type) ? std::to_string(field.width) : std::string()) + " ";
    }
    return names;
  }
};

Ref<Recordset> Source() {
  Ref<Recordset> source = MakeRef<Recordset>();
  source->AppendField("FItemID", FieldType::kInt32);
  source->AppendField("FQty", FieldType::kNumeric);
  source->AppendField("FName", FieldType::kText, 20);
  source->Open();
  return source;
}

TEST_F(LedgerPageTest, FieldsStandInTheirOrder) {
  const std::string fields =
      "FYear:smallint FPeriod:smallint FPeriodName:text30 FID:integer FEntryID:integer FDate:date "
      "FVoucherNo:wide text50 FBatchNo:text350 FBillNo:text255 FTranTypeName:wide text355 "
      "FClassTypeID:integer "
      "FAuxName:wide text355 FQtyDecimal:smallint FPriceDecimal:smallint FInQty:double FInPrice:double "
      "FInAmount:currency FInDiff:currency FOutQty:double FOutPrice:double FOutAmount:currency "
      "FOutDiff:currency FBalQty:double FBalPrice:double FBalAmount:currency FBalDiff:currency FNote:text355 "
      "FSumSort:integer ";
  std::string titles;
  for (int i = 1; i <= 11; ++i) titles += "FTitle" + std::to_string(i) + ":text355 ";
  EXPECT_EQ(FieldNames(*NewLedgerRs(false)), fields);
  EXPECT_EQ(FieldNames(*NewLedgerRs(true)), fields + titles);
  EXPECT_THAT(FieldNames(*NewBatchLedgerRs()),
              HasSubstr("FTranTypeName:text355 FAuxName:text355 FClassTypeID:integer FQtyDecimal"));
}

TEST_F(LedgerPageTest, ARowDropsTheTimeOfDayAndCutsWhatIsTooLong) {
  const Ref<Recordset> page = NewLedgerRs(false);
  LedgerRow row;
  row.year = 2024;
  row.period = 3;
  row.date = Date::Of(2024, 3, 2, 13, 30);
  const std::string longText(60, 'x');
  std::string longNote;
  for (int i = 0; i < 400; ++i) longNote += "备";
  row.voucherNo = std::string_view(longText);
  row.note = std::string_view(longNote);
  LedgerPage item(*page);
  item.AddLedgerRow(row);
  item.Finish();
  EXPECT_EQ(Spell(page->Value("FDate")), "2024-03-02");
  EXPECT_EQ(Spell(page->Value("FPeriodName")), "'2024.3'");
  EXPECT_EQ(page->TextAt(page->FieldIndex("FVoucherNo"), 0).size(), 50U);
  EXPECT_EQ(platform::CharacterCount(page->TextAt(page->FieldIndex("FNote"), 0)), 355U);
}

TEST_F(LedgerPageTest, TextsOfItsSourceAreTakenByTheirIdsAndCutAllTheSame) {
  const Ref<Recordset> source = MakeRef<Recordset>();
  source->AppendField("FVoucherNo", FieldType::kText);
  source->Open();
  const std::string longText(60, 'x');
  for (const std::string& text : {std::string("记-1"), longText}) {
    source->AddNew();
    source->SetText(0, text);
    source->Update();
  }
  const Ref<Recordset> page = NewLedgerRs(false);
  std::vector<LedgerRow> rows(2);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    rows[i].voucherNo = rows[i].billNo = platform::RowReader(*source, i).KeptText(0);
  }
  LedgerPage item(*page);
  item.ShareTexts(*source);
  for (const LedgerRow& row : rows) item.AddLedgerRow(row);
  EXPECT_EQ(item.RowCount(), 2);
  item.Finish();
  EXPECT_EQ(page->Texts(), source->Texts());
  EXPECT_EQ(page->TextAt(page->FieldIndex("FVoucherNo"), 0), "记-1");
  EXPECT_EQ(page->TextAt(page->FieldIndex("FVoucherNo"), 1).size(), 50U);
  EXPECT_EQ(page->TextAt(page->FieldIndex("FBillNo"), 1), longText);
  const Ref<Recordset> other = Source();
  item.ShareTexts(*other);
  EXPECT_EQ(page->Texts(), source->Texts()) << "rows are there: they keep their texts where they are";
}

TEST_F(LedgerPageTest, TitlesGoToTheirFields) {
  const Ref<platform::Vector> lines = MakeRef<platform::Vector>();
  lines->Add(Keys({{"FCaption", "second"}, {"FIndex", std::int16_t{1}}}));
  lines->Add(Keys({{"FCaption", "first"}, {"FIndex", std::int16_t{0}}}));
  const Ref<Recordset> page = NewLedgerRs(true);
  {
    const LedgerTitles titles = TitlesOf(lines);
    LedgerTitles own;
    own[10] = "own";
    LedgerPage item(*page, &titles);
    item.AddLedgerRow({});
    item.AddLedgerRowTitled({}, own);
    item.AddLedgerRow({});
    item.AddLedgerRow({});
    item.Finish();
  }
  {
    const LedgerTitles none = TitlesOf({});
    LedgerPage item(*page, &none);
    item.AddLedgerRow({});
    item.Finish();
  }
  std::vector<std::string> rows;
  for (std::size_t row = 0; row < 5; ++row) {
    std::string line;
    for (const char* field : {"FTitle1", "FTitle2", "FTitle8", "FTitle11"}) {
      line += std::string(page->TextAt(page->FieldIndex(field), row)) + "|";
    }
    rows.push_back(line);
  }
  EXPECT_THAT(rows, ElementsAre("first|second|||", "|||own|", "first|second|||", "first|second|||", "||||"));
}

TEST_F(LedgerPageTest, MergingMakesATargetAlsoOfAnEmptySource) {
  const Ref<Recordset> source = Source();
  Ref<Recordset> target;
  MergeRecord(target, *source, 2024, 3);
  ASSERT_TRUE(target);
  EXPECT_EQ(FieldNames(*target), "FItemID:integer FQty:double FName:text20 FYear:smallint FPeriod:smallint ");
  EXPECT_EQ(target->RecordCount(), 0);
  target->SetFilter("FItemID=1 AND FYear=2024 AND FPeriod=3");
  EXPECT_TRUE(target->AtEnd());
}

TEST_F(LedgerPageTest, MergingAppendsEveryRowWithItsPeriod) {
  Ref<Recordset> target;
  for (const std::int16_t period : {std::int16_t{3}, std::int16_t{4}}) {
    const Ref<Recordset> source = Source();
    for (const int item : {1, 2}) {
      source->AddNew();
      source->SetInteger(0, item);
      source->SetDouble(1, item * 1.5);
      source->Update();
    }
    MergeRecord(target, *source, 2024, period);
    EXPECT_TRUE(source->AtEnd());
  }
  EXPECT_EQ(target->RecordCount(), 4);
  target->SetFilter("FItemID=2 AND FYear=2024 AND FPeriod=4");
  EXPECT_EQ(target->RecordCount(), 1);
  EXPECT_EQ(Spell(target->Value("FQty")), "3.0");
  EXPECT_EQ(Spell(target->Value("FName")), "null");
}

TEST_F(LedgerPageTest, AFailedMergeSaysSo) {
  Ref<Recordset> target = MakeRef<Recordset>();
  target->AppendField("FItemID", FieldType::kInt32);
  target->Open();
  const Ref<Recordset> source = Source();
  source->AddNew();
  source->SetInteger(0, 1);
  source->Update();
  try {
    MergeRecord(target, *source, 2024, 3);
    ADD_FAILURE() << "it was accepted";
  } catch (const platform::Error& error) {
    EXPECT_EQ(static_cast<int>(error.Number()), -1000);
    EXPECT_EQ(error.Source(), "MergeRecord");
    EXPECT_THAT(error.Description(), ::testing::StartsWith("追加记录集出现错误："));
  }
}

}  // namespace
}  // namespace component
