// Tools, fittings and electric material, and the appliances whose every piece has a serial number.
#include "books/demo/Assortment.h"

namespace books::demo {
namespace {

using schema::Valuation;

constexpr Noun kWrenches[] = {{"活动扳手", 2200}, {"梅花扳手", 1800}, {"管钳", 3600},   {"尖嘴钳", 1650},
                              {"老虎钳", 1850},   {"断线钳", 4800},   {"水泵钳", 2600}, {"羊角锤", 2400}};
constexpr std::string_view kToolKinds[] = {"铬钒钢", "碳钢", "防滑柄", "镀铬",
                                           "绝缘柄", "轻便", "加长",   "工业级"};
constexpr Size kToolSizes[] = {
    {"150mm", 70}, {"200mm", 100}, {"250mm", 130}, {"300mm", 165}, {"12件套", 620}};

constexpr Noun kDrivers[] = {{"十字螺丝刀", 680}, {"一字螺丝刀", 650},  {"内六角扳手", 980}, {"套筒", 420},
                             {"批头", 380},       {"棘轮螺丝刀", 2600}, {"钟表起子", 1250},  {"试电笔", 780}};
constexpr Size kDriverSizes[] = {
    {"3×75mm", 75}, {"5×100mm", 100}, {"6×150mm", 130}, {"8×200mm", 165}, {"10件套", 520}};

constexpr Noun kGauges[] = {{"钢卷尺", 880}, {"皮卷尺", 1250}, {"水平尺", 2200}, {"直角尺", 1350},
                            {"钢直尺", 480}, {"角度尺", 2600}, {"折尺", 760},    {"数显水平尺", 6800}};
constexpr std::string_view kGaugeKinds[] = {"精密", "工业级", "加厚", "便携", "双面", "自锁", "防摔", "专业"};
constexpr Size kGaugeSizes[] = {{"300mm", 70}, {"500mm", 85}, {"1m", 100}, {"3m", 125}, {"5m", 160}};

constexpr Noun kScrews[] = {{"自攻螺丝", 1150}, {"六角螺栓", 980}, {"膨胀螺栓", 1380}, {"钢钉", 820},
                            {"平垫圈", 760},    {"螺母", 880},     {"拉铆钉", 1650},   {"木螺丝", 1050}};
constexpr std::string_view kScrewKinds[] = {"镀锌",   "不锈钢",   "发黑",   "镀镍",
                                            "高强度", "十字沉头", "外六角", "彩锌"};
constexpr Size kScrewSizes[] = {
    {"M4×16", 108}, {"M5×20", 104}, {"M6×30", 100}, {"M8×50", 96}, {"M10×80", 93}};

constexpr Noun kPlumbing[] = {{"水龙头", 4600}, {"角阀", 1850}, {"软管", 980},    {"地漏", 2200},
                              {"PPR管件", 350}, {"花洒", 5800}, {"下水器", 2600}, {"球阀", 2400}};
constexpr std::string_view kPlumbingKinds[] = {"全铜", "不锈钢", "加厚", "冷热",
                                               "快开", "防臭",   "镀铬", "黑色"};
constexpr Size kPlumbingSizes[] = {
    {"经济型", 80}, {"标准型", 100}, {"加强型", 125}, {"工程装", 92}, {"家装款", 112}};

constexpr Noun kSwitches[] = {{"五孔插座", 980},  {"单开开关", 720},   {"双开开关", 1050},
                              {"三孔插座", 1100}, {"四孔插座", 1250},  {"转换插座", 2900},
                              {"空气开关", 2200}, {"漏电保护器", 4600}};
constexpr std::string_view kSwitchKinds[] = {"雅白", "香槟金", "星空灰", "明装",
                                             "暗装", "加厚",   "阻燃",   "工程款"};
constexpr Size kSwitchSizes[] = {{"10A", 100}, {"16A", 118}, {"20A", 135}, {"32A", 160}, {"63A", 210}};

constexpr Noun kCables[] = {{"铜芯电线", 210}, {"护套线", 320},   {"网线", 180},   {"电话线", 90},
                            {"音响线", 150},   {"橡套电缆", 680}, {"接地线", 230}, {"视频线", 160}};
constexpr std::string_view kCableKinds[] = {"红色",     "蓝色", "黄绿双色", "阻燃",
                                            "低烟无卤", "屏蔽", "软芯",     "硬芯"};
constexpr Size kCableSizes[] = {
    {"0.5mm²", 42}, {"0.75mm²", 55}, {"1mm²", 70}, {"1.5mm²", 100}, {"2.5mm²", 155}};

constexpr Noun kLamps[] = {{"LED球泡", 680}, {"LED灯管", 1250}, {"吸顶灯", 5600}, {"台灯", 4800},
                           {"射灯", 1650},   {"灯带", 880},     {"应急灯", 3900}, {"投光灯", 6200}};
constexpr std::string_view kLampKinds[] = {"白光", "暖光",   "中性光", "护眼",
                                           "感应", "可调光", "防水",   "节能"};
constexpr Size kLampSizes[] = {{"5W", 70}, {"9W", 100}, {"12W", 120}, {"18W", 155}, {"36W", 230}};

constexpr Noun kKitchen[] = {{"电饭煲", 16800}, {"电热水壶", 6800},  {"电火锅", 13600}, {"料理机", 18800},
                             {"豆浆机", 21000}, {"空气炸锅", 23500}, {"电炖锅", 12800}, {"电蒸锅", 14500}};
constexpr std::string_view kApplianceKinds[] = {"智能", "机械式", "触控", "家用",
                                                "轻音", "多功能", "迷你", "节能"};
constexpr Size kKitchenSizes[] = {{"1.5L", 85}, {"2L", 92}, {"3L", 100}, {"4L", 112}, {"5L", 128}};

constexpr Noun kCooling[] = {{"落地扇", 12800}, {"台式风扇", 6800}, {"塔扇", 18600},  {"冷风扇", 26500},
                             {"吊扇", 14200},   {"循环扇", 13500},  {"灭蚊灯", 4200}, {"除湿机", 52000}};
constexpr Size kPowerSizes[] = {{"40W", 85}, {"55W", 100}, {"60W", 108}, {"80W", 125}, {"120W", 150}};

constexpr Noun kHeating[] = {{"暖风机", 11800},      {"电暖器", 19800},      {"电热毯", 7600},
                             {"小太阳取暖器", 6900}, {"暖手宝", 4200},       {"加湿器", 8800},
                             {"足浴盆", 16500},      {"踢脚线取暖器", 32000}};
constexpr Size kHeatingSizes[] = {
    {"迷你款", 80}, {"标准款", 100}, {"速热款", 115}, {"静音款", 122}, {"加大款", 140}};

constexpr Noun kVacuum[] = {{"吸尘器", 26800},   {"扫地机", 88000},    {"挂烫机", 15800},
                            {"蒸汽拖把", 24500}, {"除螨仪", 19800},    {"毛球修剪器", 3200},
                            {"电熨斗", 8600},    {"空气净化器", 56000}};

constexpr Noun kCare[] = {{"电吹风", 7200}, {"剃须刀", 9800},  {"理发器", 6500}, {"电动牙刷", 11800},
                          {"卷发棒", 6900}, {"按摩仪", 15600}, {"体重秤", 4600}, {"洁面仪", 13200}};
constexpr Size kCareSizes[] = {
    {"标准款", 100}, {"旅行款", 82}, {"升级款", 135}, {"礼盒款", 150}, {"专业款", 175}};

constexpr Family kHardware[] = {
    {.number = "03.01.01",
     .name = "扳手钳锤",
     .unit = "把",
     .package = "盒",
     .packageFactor = 6,
     .nouns = kWrenches,
     .variants = kToolKinds,
     .sizes = kToolSizes,
     .season = kEvenSeason,
     .pace = 60,
     .typicalSale = 3,
     .drift = 30},
    {.number = "03.01.02",
     .name = "螺丝刀具",
     .unit = "把",
     .package = "盒",
     .packageFactor = 12,
     .nouns = kDrivers,
     .variants = kToolKinds,
     .sizes = kDriverSizes,
     .season = kEvenSeason,
     .pace = 70,
     .typicalSale = 5,
     .drift = 20,
     .valuation = Valuation::kMonthlyAverage},
    {.number = "03.01.03",
     .name = "量具",
     .unit = "把",
     .nouns = kGauges,
     .variants = kGaugeKinds,
     .sizes = kGaugeSizes,
     .season = kEvenSeason,
     .pace = 40,
     .typicalSale = 2,
     .drift = 10},
    {.number = "03.02.01",
     .name = "螺丝紧固件",
     .unit = "公斤",
     .auxUnit = "盒",
     .auxFactor = 2,
     .nouns = kScrews,
     .variants = kScrewKinds,
     .sizes = kScrewSizes,
     .season = kEvenSeason,
     .pace = 90,
     .typicalSale = 10,
     .drift = 70,
     .valuation = Valuation::kMonthlyAverage,
     .quantityDecimals = 2},
    {.number = "03.03.01",
     .name = "水暖配件",
     .unit = "件",
     .package = "箱",
     .packageFactor = 20,
     .nouns = kPlumbing,
     .variants = kPlumbingKinds,
     .sizes = kPlumbingSizes,
     .season = kEvenSeason,
     .pace = 80,
     .typicalSale = 6,
     .drift = 50},
    {.number = "03.03.02",
     .name = "开关插座",
     .unit = "只",
     .package = "盒",
     .packageFactor = 10,
     .nouns = kSwitches,
     .variants = kSwitchKinds,
     .sizes = kSwitchSizes,
     .season = kEvenSeason,
     .pace = 90,
     .typicalSale = 10,
     .drift = 15,
     .valuation = Valuation::kFirstInFirstOut},
    {.number = "03.03.03",
     .name = "电线电缆",
     .unit = "米",
     .package = "卷",
     .packageFactor = 100,
     .nouns = kCables,
     .variants = kCableKinds,
     .sizes = kCableSizes,
     .season = kEvenSeason,
     .pace = 80,
     .typicalSale = 80,
     .drift = 90},
    {.number = "03.03.04",
     .name = "灯具照明",
     .unit = "只",
     .package = "箱",
     .packageFactor = 20,
     .nouns = kLamps,
     .variants = kLampKinds,
     .sizes = kLampSizes,
     .season = kWinterSeason,
     .pace = 80,
     .typicalSale = 6,
     .drift = -60},
};

constexpr Family kAppliances[] = {
    {.number = "04.01.01",
     .name = "厨房电器",
     .unit = "台",
     .nouns = kKitchen,
     .variants = kApplianceKinds,
     .sizes = kKitchenSizes,
     .season = kFestivalSeason,
     .pace = 70,
     .typicalSale = 1,
     .drift = -40,
     .handling = Handling::kSerial},
    {.number = "04.02.01",
     .name = "风扇除湿",
     .unit = "台",
     .nouns = kCooling,
     .variants = kApplianceKinds,
     .sizes = kPowerSizes,
     .season = kSummerSeason,
     .pace = 80,
     .typicalSale = 2,
     .drift = -20,
     .handling = Handling::kSerial},
    {.number = "04.02.02",
     .name = "取暖加湿",
     .unit = "台",
     .nouns = kHeating,
     .variants = kApplianceKinds,
     .sizes = kHeatingSizes,
     .season = kWinterSeason,
     .pace = 80,
     .typicalSale = 2,
     .drift = -15,
     .handling = Handling::kSerial},
    {.number = "04.02.03",
     .name = "清洁电器",
     .unit = "台",
     .nouns = kVacuum,
     .variants = kApplianceKinds,
     .sizes = kCareSizes,
     .season = kEvenSeason,
     .pace = 50,
     .typicalSale = 1,
     .drift = -70,
     .handling = Handling::kSerial},
    {.number = "04.03.01",
     .name = "个护电器",
     .unit = "台",
     .package = "箱",
     .packageFactor = 10,
     .nouns = kCare,
     .variants = kApplianceKinds,
     .sizes = kCareSizes,
     .season = kEvenSeason,
     .pace = 70,
     .typicalSale = 2,
     .drift = -30,
     .property = Property::kColour},
};

constexpr Category kCategories[] = {
    {"01", "食品"},        {"01.01", "休闲食品"}, {"01.02", "粮油调味"}, {"01.03", "酒水饮料"},
    {"01.04", "乳品冷冻"}, {"01.05", "生鲜"},     {"02", "日化"},        {"02.01", "个人护理"},
    {"02.02", "家庭清洁"}, {"02.03", "纸品卫生"}, {"03", "五金"},        {"03.01", "手动工具"},
    {"03.02", "紧固件"},   {"03.03", "水暖电料"}, {"04", "小家电"},      {"04.01", "厨房电器"},
    {"04.02", "生活电器"}, {"04.03", "个护电器"}, {"05", "家居百货"},    {"05.01", "厨房用品"},
    {"05.02", "家纺服饰"}, {"05.03", "文具"},     {"05.04", "礼品"},
};

}  // namespace

std::span<const Category> Categories() { return kCategories; }
std::span<const Family> HardwareFamilies() { return kHardware; }
std::span<const Family> ApplianceFamilies() { return kAppliances; }

}  // namespace books::demo
