// Food and drink: kept by batch with a shelf life, dearer or cheaper with the season.
#include "books/demo/Assortment.h"

namespace books::demo {
namespace {

using schema::Valuation;

constexpr Noun kNuts[] = {{"花生米", 420},  {"葵花籽", 380},  {"西瓜子", 520},  {"腰果", 1850},
                          {"开心果", 2100}, {"核桃仁", 1650}, {"巴旦木", 1780}, {"松子", 2600}};
constexpr std::string_view kNutFlavours[] = {"原味", "五香",   "盐焗",   "奶油",
                                             "椒盐", "蟹黄味", "蜂蜜味", "山核桃味"};
constexpr Size kNutSizes[] = {{"100g", 100}, {"160g", 150}, {"250g", 225}, {"500g", 430}, {"1kg", 820}};

constexpr Noun kBiscuits[] = {{"苏打饼干", 350}, {"曲奇", 620}, {"威化", 410},   {"蛋卷", 560},
                              {"绿豆糕", 680},   {"桃酥", 520}, {"沙琪玛", 590}, {"手撕面包", 760}};
constexpr std::string_view kBiscuitFlavours[] = {"原味",   "奶香",   "香葱", "巧克力味",
                                                 "抹茶味", "椰子味", "芝麻", "红豆"};
constexpr Size kBiscuitSizes[] = {{"120g", 100}, {"200g", 155}, {"300g", 220}, {"400g", 285}, {"800g", 540}};

constexpr Noun kSweets[] = {{"水果硬糖", 300}, {"奶糖", 420}, {"软糖", 380},   {"棒棒糖", 260},
                            {"棉花糖", 340},   {"果冻", 260}, {"夹心糖", 410}, {"巧克力豆", 780}};
constexpr std::string_view kSweetFlavours[] = {"原味",   "草莓味", "柠檬味", "蜜桃味",
                                               "葡萄味", "薄荷味", "酸奶味", "混合口味"};
constexpr Size kSweetSizes[] = {{"80g", 100}, {"150g", 175}, {"228g", 255}, {"350g", 380}, {"500g", 520}};

constexpr Noun kGrains[] = {{"东北大米", 2600}, {"长粒香米", 2950}, {"糯米", 2400}, {"小米", 2800},
                            {"小麦粉", 1500},   {"玉米面", 1300},   {"绿豆", 3100}, {"挂面", 1200}};
constexpr std::string_view kGrainKinds[] = {"一级", "特级", "当季", "农家", "有机", "优质", "生态", "新货"};
constexpr Size kGrainSizes[] = {{"1kg", 28}, {"2.5kg", 58}, {"5kg", 100}, {"10kg", 190}, {"25kg", 450}};

constexpr Noun kOils[] = {{"大豆油", 5200},   {"菜籽油", 6100},  {"花生油", 9800},  {"玉米油", 6800},
                          {"葵花籽油", 7200}, {"芝麻油", 15800}, {"橄榄油", 21500}, {"山茶油", 26800}};
constexpr std::string_view kOilKinds[] = {"一级", "压榨", "浓香", "清香", "物理压榨", "初榨", "精炼", "家用"};
constexpr Size kOilSizes[] = {{"500ml", 12}, {"900ml", 20}, {"1.8L", 39}, {"5L", 100}, {"10L", 192}};

constexpr Noun kSeasonings[] = {{"酱油", 680},   {"陈醋", 560},   {"蚝油", 720},   {"料酒", 480},
                                {"豆瓣酱", 850}, {"番茄酱", 620}, {"辣椒酱", 760}, {"芝麻酱", 980}};
constexpr std::string_view kSeasoningKinds[] = {"经典", "特级",   "鲜味", "薄盐",
                                                "家常", "零添加", "传统", "农家"};
constexpr Size kSeasoningSizes[] = {{"250g", 60}, {"400g", 85}, {"500g", 100}, {"800g", 145}, {"2kg", 320}};

constexpr Noun kTeaDrinks[] = {{"苏打水", 210},     {"气泡水", 230},     {"绿茶饮料", 240},
                               {"红茶饮料", 240},   {"乌龙茶饮料", 290}, {"茉莉花茶饮料", 260},
                               {"大麦茶饮料", 250}, {"凉茶", 280}};
constexpr std::string_view kTeaKinds[] = {"原味",   "无糖",   "低糖", "柠檬味",
                                          "蜂蜜味", "白桃味", "清爽", "青柠味"};
constexpr Size kDrinkSizes[] = {{"350ml", 80}, {"500ml", 100}, {"550ml", 105}, {"1L", 170}, {"1.5L", 225}};

constexpr Noun kJuices[] = {{"橙汁", 420},   {"苹果汁", 400}, {"葡萄汁", 450}, {"椰子汁", 480},
                            {"山楂汁", 410}, {"西柚汁", 470}, {"芒果汁", 460}, {"番茄汁", 390}};
constexpr std::string_view kJuiceKinds[] = {"100%",   "30%",  "果粒", "浓缩还原",
                                            "鲜榨型", "轻甜", "低温", "无添加糖"};

constexpr Noun kLiquors[] = {{"清香型白酒", 4800}, {"浓香型白酒", 5600}, {"酱香型白酒", 12800},
                             {"米香型白酒", 3600}, {"兼香型白酒", 6200}, {"高粱酒", 2400},
                             {"纯粮酒", 2900},     {"糯米酒", 1800}};
constexpr std::string_view kLiquorKinds[] = {"42度",   "45度",   "52度", "三年陈",
                                             "五年陈", "八年陈", "原浆", "窖藏"};
constexpr Size kLiquorSizes[] = {{"125ml", 30}, {"250ml", 55}, {"500ml", 100}, {"750ml", 148}, {"1.5L", 290}};

constexpr Noun kMilks[] = {{"鲜牛奶", 520},     {"酸牛奶", 580},   {"纯牛奶", 340},   {"巴氏奶", 620},
                           {"乳酸菌饮品", 310}, {"谷物牛奶", 450}, {"风味酸奶", 590}, {"豆奶", 280}};
constexpr std::string_view kMilkKinds[] = {"原味",   "低脂",   "高钙",   "全脂",
                                           "草莓味", "黄桃味", "无蔗糖", "燕麦"};
constexpr Size kMilkSizes[] = {{"200ml", 58}, {"250ml", 70}, {"450ml", 100}, {"950ml", 190}, {"1.5L", 275}};

constexpr Noun kFrozen[] = {{"水饺", 1250}, {"汤圆", 980},  {"云吞", 1180},   {"鸡块", 1650},
                            {"虾仁", 4200}, {"鱼丸", 1580}, {"牛肉片", 4600}, {"手抓饼", 1120}};
constexpr std::string_view kFrozenKinds[] = {"手工", "家庭装", "儿童", "鲜香",
                                             "原味", "香辣",   "轻盐", "餐饮装"};
constexpr Size kFrozenSizes[] = {{"300g", 65}, {"500g", 100}, {"800g", 155}, {"1kg", 190}, {"2.5kg", 450}};

constexpr Noun kFruit[] = {{"苹果", 620}, {"脐橙", 580},    {"香蕉", 460},   {"葡萄", 980},
                           {"雪梨", 520}, {"猕猴桃", 1250}, {"火龙果", 860}, {"柚子", 480}};
constexpr std::string_view kFruitKinds[] = {"高山", "沙地", "本地", "有机", "鲜采", "直采", "当季", "生态"};
constexpr Size kFruitSizes[] = {{"特级", 125}, {"一级", 100}, {"二级", 82}, {"大果", 118}, {"中果", 95}};

constexpr Noun kMeat[] = {{"猪里脊", 2680}, {"五花肉", 2380}, {"牛腱", 6200},   {"羊肉卷", 5800},
                          {"鸡胸肉", 1680}, {"鸭腿", 1420},   {"带鱼段", 2200}, {"基围虾", 5200}};
constexpr std::string_view kMeatKinds[] = {"冷鲜", "冰鲜", "精修", "当日", "优质", "生态", "直采", "鲜切"};
constexpr Size kMeatSizes[] = {{"A级", 108}, {"B级", 100}, {"C级", 90}, {"小包装", 112}, {"餐饮装", 94}};

constexpr Family kFamilies[] = {
    {.number = "01.01.01",
     .name = "坚果炒货",
     .unit = "袋",
     .package = "箱",
     .packageFactor = 24,
     .nouns = kNuts,
     .variants = kNutFlavours,
     .sizes = kNutSizes,
     .season = kFestivalSeason,
     .pace = 110,
     .typicalSale = 6,
     .drift = 45,
     .shelfLifeDays = 240,
     .handling = Handling::kBatch},
    {.number = "01.01.02",
     .name = "饼干糕点",
     .unit = "袋",
     .package = "箱",
     .packageFactor = 20,
     .nouns = kBiscuits,
     .variants = kBiscuitFlavours,
     .sizes = kBiscuitSizes,
     .season = kFestivalSeason,
     .pace = 120,
     .typicalSale = 5,
     .drift = 30,
     .shelfLifeDays = 180,
     .handling = Handling::kBatch,
     .valuation = Valuation::kFirstInFirstOut},
    {.number = "01.01.03",
     .name = "糖果果冻",
     .unit = "袋",
     .package = "箱",
     .packageFactor = 30,
     .nouns = kSweets,
     .variants = kSweetFlavours,
     .sizes = kSweetSizes,
     .season = kFestivalSeason,
     .typicalSale = 6,
     .drift = 25,
     .shelfLifeDays = 360,
     .handling = Handling::kBatch},
    {.number = "01.02.01",
     .name = "米面杂粮",
     .unit = "袋",
     .package = "件",
     .packageFactor = 5,
     .nouns = kGrains,
     .variants = kGrainKinds,
     .sizes = kGrainSizes,
     .season = kEvenSeason,
     .pace = 130,
     .typicalSale = 8,
     .drift = 35,
     .shelfLifeDays = 365,
     .handling = Handling::kBatch,
     .valuation = Valuation::kFirstInFirstOut},
    {.number = "01.02.02",
     .name = "食用油",
     .unit = "桶",
     .package = "箱",
     .packageFactor = 4,
     .nouns = kOils,
     .variants = kOilKinds,
     .sizes = kOilSizes,
     .season = kFestivalSeason,
     .pace = 110,
     .typicalSale = 3,
     .drift = -35,
     .shelfLifeDays = 540,
     .handling = Handling::kBatch,
     .valuation = Valuation::kBatchCost},
    {.number = "01.02.03",
     .name = "酱醋调味",
     .unit = "瓶",
     .package = "箱",
     .packageFactor = 12,
     .nouns = kSeasonings,
     .variants = kSeasoningKinds,
     .sizes = kSeasoningSizes,
     .season = kEvenSeason,
     .pace = 120,
     .typicalSale = 5,
     .drift = 20,
     .shelfLifeDays = 540,
     .handling = Handling::kBatch},
    {.number = "01.03.01",
     .name = "茶饮汽水",
     .unit = "瓶",
     .package = "箱",
     .packageFactor = 24,
     .nouns = kTeaDrinks,
     .variants = kTeaKinds,
     .sizes = kDrinkSizes,
     .season = kSummerSeason,
     .pace = 150,
     .typicalSale = 15,
     .drift = 10,
     .shelfLifeDays = 360,
     .handling = Handling::kBatch},
    {.number = "01.03.02",
     .name = "果汁饮品",
     .unit = "瓶",
     .package = "箱",
     .packageFactor = 15,
     .nouns = kJuices,
     .variants = kJuiceKinds,
     .sizes = kDrinkSizes,
     .season = kSummerSeason,
     .pace = 110,
     .typicalSale = 8,
     .drift = 20,
     .shelfLifeDays = 270,
     .handling = Handling::kBatch,
     .valuation = Valuation::kBatchCost},
    {.number = "01.03.03",
     .name = "酒类",
     .unit = "瓶",
     .package = "箱",
     .packageFactor = 6,
     .nouns = kLiquors,
     .variants = kLiquorKinds,
     .sizes = kLiquorSizes,
     .season = kFestivalSeason,
     .pace = 70,
     .typicalSale = 3,
     .drift = 60,
     .valuation = Valuation::kFirstInFirstOut},
    {.number = "01.04.01",
     .name = "乳品",
     .unit = "盒",
     .package = "箱",
     .packageFactor = 12,
     .nouns = kMilks,
     .variants = kMilkKinds,
     .sizes = kMilkSizes,
     .season = kEvenSeason,
     .pace = 350,
     .typicalSale = 8,
     .drift = -15,
     .shelfLifeDays = 60,
     .handling = Handling::kBatch,
     .valuation = Valuation::kBatchCost},
    {.number = "01.04.02",
     .name = "速冻食品",
     .unit = "袋",
     .package = "箱",
     .packageFactor = 20,
     .nouns = kFrozen,
     .variants = kFrozenKinds,
     .sizes = kFrozenSizes,
     .season = kWinterSeason,
     .pace = 120,
     .typicalSale = 5,
     .drift = 25,
     .shelfLifeDays = 300,
     .handling = Handling::kBatch},
    {.number = "01.05.01",
     .name = "水果",
     .unit = "公斤",
     .auxUnit = "件",
     .auxFactor = 10,
     .nouns = kFruit,
     .variants = kFruitKinds,
     .sizes = kFruitSizes,
     .season = kEvenSeason,
     .pace = 500,
     .typicalSale = 12,
     .drift = 40,
     .shelfLifeDays = 30,
     .handling = Handling::kBatch,
     .valuation = Valuation::kBatchCost,
     .quantityDecimals = 2},
    {.number = "01.05.02",
     .name = "肉禽水产",
     .unit = "公斤",
     .auxUnit = "件",
     .auxFactor = 5,
     .nouns = kMeat,
     .variants = kMeatKinds,
     .sizes = kMeatSizes,
     .season = kWinterSeason,
     .pace = 420,
     .typicalSale = 8,
     .drift = 55,
     .shelfLifeDays = 45,
     .handling = Handling::kBatch,
     .quantityDecimals = 2},
};

}  // namespace

std::span<const Family> FoodFamilies() { return kFamilies; }

}  // namespace books::demo
