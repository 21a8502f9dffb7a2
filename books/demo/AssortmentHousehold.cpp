// Care, cleaning and household goods: plain counting, some in colours and sizes, and the gift boxes that are
// put together from other goods.
#include "books/demo/Assortment.h"

namespace books::demo {
namespace {

using schema::Valuation;

constexpr Noun kHair[] = {{"洗发水", 1650}, {"沐浴露", 1480}, {"护发素", 1520},     {"香皂", 320},
                          {"洗手液", 780},  {"发膜", 2100},   {"泡沫洁面乳", 1850}, {"沐浴盐", 1250}};
constexpr std::string_view kHairKinds[] = {"清爽", "滋养", "薄荷", "樱花", "氨基酸", "生姜", "茶树", "燕麦"};
constexpr Size kHairSizes[] = {{"200ml", 55}, {"400ml", 100}, {"500ml", 120}, {"750ml", 165}, {"1L", 205}};

constexpr Noun kTeeth[] = {{"牙膏", 580},     {"牙刷", 350},     {"漱口水", 1280}, {"牙线", 420},
                           {"儿童牙膏", 680}, {"儿童牙刷", 480}, {"牙粉", 760},    {"牙间刷", 550}};
constexpr std::string_view kTeethKinds[] = {"薄荷", "清新", "抗敏", "草本", "果味", "护龈", "亮白", "日常"};
constexpr Size kTeethSizes[] = {
    {"单支", 100}, {"两支装", 185}, {"三支装", 270}, {"四支装", 350}, {"六支装", 510}};

constexpr Noun kSkin[] = {{"润肤乳", 1980}, {"护手霜", 880}, {"面霜", 3200}, {"防晒乳", 2900},
                          {"爽肤水", 2400}, {"润唇膏", 650}, {"面膜", 2600}, {"身体乳", 1850}};
constexpr std::string_view kSkinKinds[] = {"保湿", "舒缓", "芦荟", "玫瑰", "燕麦", "清润", "修护", "婴幼儿"};
constexpr Size kSkinSizes[] = {{"30g", 45}, {"50g", 70}, {"80g", 100}, {"100g", 120}, {"150g", 165}};

constexpr Noun kLaundry[] = {{"洗衣液", 1850}, {"洗衣粉", 1200}, {"洗衣凝珠", 3200}, {"柔顺剂", 1580},
                             {"衣领净", 880},  {"除菌液", 1450}, {"彩漂液", 1350},   {"内衣专用液", 1650}};
constexpr std::string_view kLaundryKinds[] = {"薰衣草", "除菌", "深层洁净", "自然清香",
                                              "低泡",   "浓缩", "樱花",     "柔护"};
constexpr Size kLaundrySizes[] = {{"500g", 38}, {"1kg", 70}, {"2kg", 125}, {"3kg", 180}, {"5kg", 280}};

constexpr Noun kCleaning[] = {{"洗洁精", 680},      {"油污净", 1150}, {"洁厕液", 780}, {"玻璃水", 650},
                              {"地板清洁剂", 1280}, {"除垢剂", 980},  {"消毒液", 850}, {"管道疏通剂", 920}};
constexpr std::string_view kCleaningKinds[] = {"柠檬",   "强效", "温和", "无磷",
                                               "海洋香", "浓缩", "泡沫", "食品级"};
constexpr Size kCleaningSizes[] = {{"500ml", 65}, {"750ml", 88}, {"1L", 100}, {"2L", 175}, {"5L", 390}};

constexpr Noun kPaper[] = {{"抽纸", 1450},   {"卷纸", 1680},   {"手帕纸", 780}, {"厨房纸", 1250},
                           {"擦手纸", 1380}, {"湿厕纸", 1150}, {"餐巾纸", 680}, {"洗脸巾", 1050}};
constexpr std::string_view kPaperKinds[] = {"三层", "四层", "本色", "无香", "加厚", "柔韧", "竹浆", "云柔"};
constexpr Size kPaperSizes[] = {{"小包", 55}, {"6包", 80}, {"10包", 125}, {"16包", 190}, {"24包", 270}};

constexpr Noun kWipes[] = {{"婴儿湿巾", 880}, {"棉柔巾", 1180},  {"成人护理垫", 2600}, {"医用棉签", 320},
                           {"口罩", 950},     {"消毒湿巾", 780}, {"婴儿纸尿裤", 5200}, {"化妆棉", 650}};
constexpr std::string_view kWipesKinds[] = {"加厚", "无香", "便携",     "超薄",
                                            "透气", "亲肤", "独立包装", "家庭装"};

constexpr Noun kPots[] = {{"炒锅", 8800}, {"汤锅", 7600}, {"平底锅", 6500}, {"奶锅", 4200},
                          {"蒸锅", 9200}, {"火锅", 8200}, {"煎锅", 5900},   {"炖锅", 7900}};
constexpr std::string_view kPotKinds[] = {"不锈钢", "麦饭石", "精铁", "铝合金",
                                          "不粘",   "加厚",   "复底", "大容量"};
constexpr Size kPotSizes[] = {{"18cm", 70}, {"24cm", 90}, {"26cm", 100}, {"30cm", 122}, {"32cm", 135}};

constexpr Noun kTableware[] = {{"饭碗", 480}, {"汤碗", 780},   {"餐盘", 650},   {"筷子", 1200},
                               {"汤勺", 380}, {"马克杯", 980}, {"玻璃杯", 560}, {"茶具", 6800}};
constexpr std::string_view kTablewareKinds[] = {"青花", "纯白", "素雅", "简约",
                                                "日式", "田园", "描金", "浮雕"};
constexpr Size kTablewareSizes[] = {
    {"单只", 60}, {"对装", 110}, {"四只装", 210}, {"六只装", 300}, {"十只装", 470}};

constexpr Noun kStorage[] = {{"保鲜盒", 1180}, {"密封罐", 980}, {"收纳箱", 3200}, {"收纳篮", 1480},
                             {"收纳盒", 880},  {"米桶", 3600},  {"调料盒", 760},  {"杂物筐", 1250}};
constexpr std::string_view kStorageKinds[] = {"加厚", "透明", "带盖", "可叠放",
                                              "分隔", "防滑", "北欧", "家用"};
constexpr Size kStorageSizes[] = {
    {"小号", 70}, {"中号", 100}, {"大号", 145}, {"特大号", 210}, {"三件套", 240}};

constexpr Noun kTowels[] = {{"毛巾", 980},  {"浴巾", 3600}, {"方巾", 480},  {"地垫", 2800},
                            {"围裙", 1500}, {"枕套", 1900}, {"抱枕", 3200}, {"毛毯", 6800}};
constexpr std::string_view kTowelKinds[] = {"纯棉", "竹纤维", "长绒棉", "珊瑚绒",
                                            "素色", "提花",   "格纹",   "加厚"};
constexpr Size kTowelSizes[] = {{"小号", 75}, {"中号", 100}, {"大号", 135}, {"加大", 170}, {"两条装", 190}};

constexpr Noun kWorkwear[] = {{"工作服", 8600}, {"雨衣", 4200}, {"保暖内衣", 7800}, {"棉拖鞋", 2600},
                              {"劳保鞋", 9800}, {"袜子", 680},  {"围巾", 4500},     {"手套", 950}};
constexpr std::string_view kWorkwearKinds[] = {"男款", "女款", "加绒", "透气",
                                               "经典", "四季", "轻便", "保暖"};
constexpr Size kWorkwearSizes[] = {{"普通", 100}, {"加厚", 125}, {"轻薄", 88}, {"加长", 112}, {"套装", 185}};

constexpr Noun kStationery[] = {{"笔记本", 620},  {"中性笔", 180},  {"文件夹", 450}, {"便利贴", 320},
                                {"复印纸", 2100}, {"订书机", 1350}, {"胶带", 280},   {"记号笔", 350}};
constexpr std::string_view kStationeryKinds[] = {"商务", "学生", "彩色", "加厚",
                                                 "透明", "简约", "办公", "便携"};
constexpr Size kStationerySizes[] = {
    {"小号", 75}, {"中号", 100}, {"大号", 140}, {"6件装", 520}, {"12件装", 980}};

constexpr Noun kGiftBoxes[] = {{"坚果礼盒", 0}, {"糕点礼盒", 0},   {"调味礼盒", 0},   {"饮品礼盒", 0},
                               {"洗护礼盒", 0}, {"年货大礼包", 0}, {"员工福利包", 0}, {"家居礼盒", 0}};
constexpr std::string_view kGiftBoxKinds[] = {"福满", "团圆", "丰收", "喜庆", "如意", "吉祥", "暖冬", "金秋"};
constexpr Size kGiftBoxSizes[] = {{"三件装", 100}, {"三件装（红）", 100}, {"三件装（金）", 100}};

constexpr Family kFamilies[] = {
    {.number = "02.01.01",
     .name = "洗护用品",
     .unit = "瓶",
     .package = "箱",
     .packageFactor = 12,
     .nouns = kHair,
     .variants = kHairKinds,
     .sizes = kHairSizes,
     .season = kEvenSeason,
     .typicalSale = 4,
     .drift = 25,
     .shelfLifeDays = 1095,
     .handling = Handling::kBatch},
    {.number = "02.01.02",
     .name = "口腔护理",
     .unit = "支",
     .package = "盒",
     .packageFactor = 36,
     .nouns = kTeeth,
     .variants = kTeethKinds,
     .sizes = kTeethSizes,
     .season = kEvenSeason,
     .typicalSale = 8,
     .drift = 15},
    {.number = "02.01.03",
     .name = "护肤用品",
     .unit = "支",
     .package = "盒",
     .packageFactor = 24,
     .nouns = kSkin,
     .variants = kSkinKinds,
     .sizes = kSkinSizes,
     .season = kWinterSeason,
     .pace = 80,
     .typicalSale = 4,
     .drift = 30,
     .shelfLifeDays = 730,
     .handling = Handling::kBatch},
    {.number = "02.02.01",
     .name = "衣物洗涤",
     .unit = "袋",
     .package = "箱",
     .packageFactor = 6,
     .nouns = kLaundry,
     .variants = kLaundryKinds,
     .sizes = kLaundrySizes,
     .season = kEvenSeason,
     .pace = 120,
     .typicalSale = 4,
     .drift = 20},
    {.number = "02.02.02",
     .name = "厨卫清洁",
     .unit = "瓶",
     .package = "箱",
     .packageFactor = 12,
     .nouns = kCleaning,
     .variants = kCleaningKinds,
     .sizes = kCleaningSizes,
     .season = kFestivalSeason,
     .typicalSale = 5,
     .drift = 10,
     .valuation = Valuation::kMonthlyAverage},
    {.number = "02.03.01",
     .name = "生活用纸",
     .unit = "提",
     .package = "箱",
     .packageFactor = 8,
     .nouns = kPaper,
     .variants = kPaperKinds,
     .sizes = kPaperSizes,
     .season = kEvenSeason,
     .pace = 140,
     .typicalSale = 6,
     .drift = -30},
    {.number = "02.03.02",
     .name = "卫生护理",
     .unit = "包",
     .package = "箱",
     .packageFactor = 24,
     .nouns = kWipes,
     .variants = kWipesKinds,
     .sizes = kPaperSizes,
     .season = kEvenSeason,
     .typicalSale = 6,
     .drift = 5,
     .shelfLifeDays = 730,
     .handling = Handling::kBatch,
     .valuation = Valuation::kFirstInFirstOut},
    {.number = "05.01.01",
     .name = "锅具",
     .unit = "口",
     .nouns = kPots,
     .variants = kPotKinds,
     .sizes = kPotSizes,
     .season = kEvenSeason,
     .pace = 60,
     .typicalSale = 2,
     .drift = 30},
    {.number = "05.01.02",
     .name = "餐具茶具",
     .unit = "件",
     .package = "箱",
     .packageFactor = 40,
     .nouns = kTableware,
     .variants = kTablewareKinds,
     .sizes = kTablewareSizes,
     .season = kFestivalSeason,
     .pace = 80,
     .typicalSale = 10,
     .drift = 15,
     .valuation = Valuation::kMonthlyAverage},
    {.number = "05.01.03",
     .name = "保鲜收纳",
     .unit = "个",
     .package = "箱",
     .packageFactor = 24,
     .nouns = kStorage,
     .variants = kStorageKinds,
     .sizes = kStorageSizes,
     .season = kEvenSeason,
     .typicalSale = 6,
     .drift = -10},
    {.number = "05.02.01",
     .name = "毛巾家纺",
     .unit = "条",
     .package = "包",
     .packageFactor = 10,
     .nouns = kTowels,
     .variants = kTowelKinds,
     .sizes = kTowelSizes,
     .season = kWinterSeason,
     .pace = 80,
     .typicalSale = 4,
     .drift = 25,
     .property = Property::kColour},
    {.number = "05.02.02",
     .name = "服饰鞋袜",
     .unit = "件",
     .nouns = kWorkwear,
     .variants = kWorkwearKinds,
     .sizes = kWorkwearSizes,
     .season = kWinterSeason,
     .pace = 70,
     .typicalSale = 3,
     .drift = 35,
     .property = Property::kGarmentSize},
    {.number = "05.03.01",
     .name = "办公文具",
     .unit = "件",
     .package = "盒",
     .packageFactor = 12,
     .nouns = kStationery,
     .variants = kStationeryKinds,
     .sizes = kStationerySizes,
     .season = {70, 90, 130, 95, 90, 95, 80, 150, 150, 85, 85, 80},
     .typicalSale = 12,
     .drift = -20,
     .valuation = Valuation::kMonthlyAverage},
    {.number = "05.04.01",
     .name = "礼盒套装",
     .unit = "套",
     .nouns = kGiftBoxes,
     .variants = kGiftBoxKinds,
     .sizes = kGiftBoxSizes,
     .season = kFestivalSeason,
     .pace = 60,
     .typicalSale = 4,
     .handling = Handling::kAssembled},
};

}  // namespace

std::span<const Family> HouseholdFamilies() { return kFamilies; }

}  // namespace books::demo
