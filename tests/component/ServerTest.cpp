// The built library from outside: what it exports, which classes it lists, and when it may be unloaded.
#include <array>
#include <fstream>
#include <set>

#include "component/filter/Rpt10414.h"
#include "component/server/Classes.h"
#include "platform/object/LoadedComponent.h"
#include "tests/component/ComponentTest.h"

namespace component {
namespace {

using platform::ClassRegistry;
using platform::CreateObject;
using platform::Object;
using platform::Ref;
using ::testing::ElementsAre;

const std::string kLibrary = TEST_BINARY_DIR "/TOVStockRpt.so";

// Numbers of a file in the machine's own order, as its loader reads them.
class File {
 public:
  explicit File(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    bytes_.assign(std::istreambuf_iterator<char>(in), {});
  }
  std::uint64_t Number(std::size_t offset, int width) const {
    std::uint64_t number = 0;
    for (int i = width - 1; i >= 0; --i) {
      number = (number << 8) | static_cast<unsigned char>(bytes_.at(offset + static_cast<std::size_t>(i)));
    }
    return number;
  }
  std::string Text(std::size_t offset) const { return bytes_.c_str() + offset; }
  std::size_t Size() const { return bytes_.size(); }

 private:
  std::string bytes_;
};

// The names in the dynamic symbol table that the library defines (64-bit ELF).
std::set<std::string> ExportedNames(const File& file) {
  constexpr std::uint64_t kDynamicSymbols = 11;
  constexpr std::size_t kSymbolSize = 24;
  std::set<std::string> names;
  const std::size_t sections = file.Number(0x28, 8);
  const std::size_t sectionSize = file.Number(0x3A, 2);
  const std::size_t count = file.Number(0x3C, 2);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t section = sections + i * sectionSize;
    if (file.Number(section + 4, 4) != kDynamicSymbols) continue;
    const std::size_t texts = file.Number(sections + file.Number(section + 0x28, 4) * sectionSize + 0x18, 8);
    const std::size_t first = file.Number(section + 0x18, 8);
    const std::size_t size = file.Number(section + 0x20, 8);
    for (std::size_t symbol = first; symbol < first + size; symbol += kSymbolSize) {
      const bool isDefined = file.Number(symbol + 6, 2) != 0;
      const std::string name = file.Text(texts + file.Number(symbol, 4));
      if (isDefined && !name.empty()) names.insert(name);
    }
  }
  return names;
}

class ServerTest : public ComponentTest {
 protected:
  std::int32_t CanUnload(const platform::SharedLibrary& library) const {
    return library.Entry<platform::DllCanUnloadNowEntry>("DllCanUnloadNow")();
  }
};

TEST_F(ServerTest, TheLibraryExportsItsFourEntriesAndNothingElse) {
  const File file(kLibrary);
  ASSERT_GT(file.Size(), 64U);
  EXPECT_THAT(ExportedNames(file), ElementsAre("DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer",
                                               "DllUnregisterServer"));
}

TEST_F(ServerTest, FifteenClassesStandInTheTable) {
  struct Row {
    const char* id;
    const char* number;
    const char* title;
  };
  const Row rows[] = {{"Rpt302", "10422", "即时库存表"},
                      {"Rpt332", "10432", "即时库存行式查询"},
                      {"Rpt303", "303", "库存结构分析表"},
                      {"Rpt10401", "10401", "收发业务汇总表"},
                      {"Rpt10402", "10402", "库存商品明细账"},
                      {"Rpt10403", "10403", "其他出入库单关联表"},
                      {"Rpt10411", "10411", "保质期清单"},
                      {"Rpt10412", "10412", "商品收发汇总表"},
                      {"Rpt10413", "10413", "商品收发明细表"},
                      {"Rpt10414", "10414", "商品超储短缺表"},
                      {"Rpt10415", "10415", "采购价格分析表"},
                      {"Rpt10416", "10416", "批号管理商品收发汇总表"},
                      {"Rpt10417", "10417", "批号管理商品收发明细表"},
                      {"Rpt10418", "10418", "S/N号跟踪分析表"},
                      {"Rpt10424", "10424", "可用库存查询表"}};
  const platform::LoadedComponent loaded(kLibrary);
  ASSERT_EQ(loaded.Classes().size(), std::size(rows));
  std::set<std::array<std::uint8_t, 16>> identities;
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    SCOPED_TRACE(rows[i].id);
    const platform::ComponentClass& served = loaded.Classes()[i];
    EXPECT_EQ(served.programmaticId, std::string("TOVStockRpt.") + rows[i].id);
    EXPECT_EQ(served.number, rows[i].number);
    EXPECT_EQ(served.title, rows[i].title);
    EXPECT_TRUE(ClassRegistry::Process().IsRegistered(served.programmaticId));
    identities.insert(served.classId.bytes);
  }
  EXPECT_EQ(identities.size(), std::size(rows)) << "each identity is its own";
}

TEST_F(ServerTest, AReportIsCreatedByItsProgrammaticId) {
  const platform::LoadedComponent loaded(kLibrary);
  EXPECT_TRUE(loaded.CanUnload()) << "nothing happens when it is loaded";
  Ref<Object> report = CreateObject("tovstockrpt.RPT10414");
  EXPECT_EQ(report->ClassName(), "TOVStockRpt.Rpt10414");
  EXPECT_EQ(Spell(report->Get("Property")), "{Name: '商品超储短缺表', RptProperty: 6}");
  EXPECT_FALSE(loaded.CanUnload());
  Ref<Object> second = CreateObject("TOVStockRpt.Rpt10414");
  report = nullptr;
  EXPECT_FALSE(loaded.CanUnload());
  second = nullptr;
  EXPECT_TRUE(loaded.CanUnload());
  EXPECT_EQ(Report::LiveCount(), 0) << "the library counts its own objects";
}

TEST_F(ServerTest, EveryListedClassIsMade) {
  const platform::LoadedComponent loaded(kLibrary);
  for (const ServedClass& listed : ServedClasses()) {
    const std::string id(listed.description.programmaticId);
    EXPECT_EQ(CreateObject(id)->ClassName(), id);
  }
}

TEST_F(ServerTest, FactoriesAreHandedOutByIdentity) {
  const platform::LoadedComponent loaded(kLibrary);
  const platform::SharedLibrary library(kLibrary);
  auto* getClass = library.Entry<platform::DllGetClassObjectEntry>("DllGetClassObject");
  for (const platform::ComponentClass& served : loaded.Classes()) {
    SCOPED_TRACE(served.programmaticId);
    platform::ClassFactory* factory = nullptr;
    ASSERT_EQ(getClass(served.classId, &factory), platform::kServerOk);
    EXPECT_EQ(factory->Class().programmaticId, served.programmaticId);
    if (served.number != "10414") continue;
    EXPECT_EQ(factory->CreateInstance()->ClassName(), "TOVStockRpt.Rpt10414");
  }
  platform::ClassFactory* factory = nullptr;
  getClass(loaded.Classes().front().classId, &factory);
  ASSERT_NE(factory, nullptr);
  EXPECT_EQ(getClass(platform::ClassId{}, &factory), platform::kServerNoSuchClass);
  EXPECT_EQ(factory, nullptr);
  EXPECT_EQ(getClass(platform::ClassId{}, nullptr), platform::kServerFailed);
}

TEST_F(ServerTest, UnregisteringTakesTheClassesOut) {
  {
    const platform::LoadedComponent loaded(kLibrary);
    EXPECT_TRUE(ClassRegistry::Process().IsRegistered("TOVStockRpt.Rpt302"));
  }
  EXPECT_FALSE(ClassRegistry::Process().IsRegistered("TOVStockRpt.Rpt302"));
  EXPECT_EQ(Raised([] { CreateObject("TOVStockRpt.Rpt10414"); }),
            "class not registered: TOVStockRpt.Rpt10414");
}

TEST_F(ServerTest, TheProcessCanLoadItAgain) {
  for (int i = 0; i < 2; ++i) {
    const platform::LoadedComponent loaded(kLibrary);
    const platform::SharedLibrary library(kLibrary);
    EXPECT_EQ(CanUnload(library), platform::kServerOk);
    const Ref<Object> report = CreateObject("TOVStockRpt.Rpt10414");
    EXPECT_EQ(CanUnload(library), platform::kServerFalse);
  }
}

}  // namespace
}  // namespace component
