// The component's classes. Each has an identity of its own, which never changes.
#include "component/server/Classes.h"

#include "component/filter/Rpt10414.h"
#include "component/ledger/Rpt10402.h"
#include "component/movement/Rpt10401.h"
#include "component/movement/Rpt10412.h"
#include "component/movement/Rpt10413.h"
#include "component/movement/Rpt10416.h"
#include "component/movement/Rpt10417.h"
#include "component/stock/Rpt10411.h"
#include "component/stock/Rpt10415.h"
#include "component/stock/Rpt10424.h"
#include "component/stock/Rpt302.h"
#include "component/stock/Rpt303.h"
#include "component/stock/Rpt332.h"
#include "component/tracking/Rpt10403.h"
#include "component/tracking/Rpt10418.h"

namespace component {
namespace {

using platform::Object;
using platform::Ref;

// clang-format off
constexpr ServedClass kClasses[] = {
    {.description = {.programmaticId = "TOVStockRpt.Rpt302",
                     .classId = {{0x61, 0x7f, 0x78, 0xfd, 0x6f, 0x28, 0x56, 0xa3, 0x9a, 0x5d, 0x5f, 0xc7, 0x92, 0x67, 0x38, 0xf1}},
                     .number = "10422",
                     .title = "即时库存表"}, .make = MakeReport<Rpt302>},
    {.description = {.programmaticId = "TOVStockRpt.Rpt332",
                     .classId = {{0x55, 0x11, 0x38, 0xd8, 0x59, 0x74, 0x50, 0x6c, 0xaf, 0x64, 0x62, 0x09, 0xe5, 0x0c, 0x4a, 0x88}},
                     .number = "10432",
                     .title = "即时库存行式查询"}, .make = MakeReport<Rpt332>},
    {.description = {.programmaticId = "TOVStockRpt.Rpt303",
                     .classId = {{0xc6, 0x4e, 0x6a, 0x51, 0x2a, 0xdb, 0x51, 0x2f, 0xbb, 0x5e, 0x9e, 0x49, 0x4c, 0x41, 0x57, 0x3f}},
                     .number = "303",
                     .title = "库存结构分析表"}, .make = MakeReport<Rpt303>},
    {.description = {.programmaticId = "TOVStockRpt.Rpt10401",
                     .classId = {{0xf5, 0x86, 0xb5, 0xf6, 0x86, 0xa9, 0x53, 0xe8, 0xaa, 0xfb, 0xaa, 0x02, 0xe5, 0xe4, 0x68, 0x3c}},
                     .number = "10401",
                     .title = "收发业务汇总表"}, .make = MakeReport<Rpt10401>},
    {.description = {.programmaticId = "TOVStockRpt.Rpt10402",
                     .classId = {{0xea, 0xf5, 0x55, 0x08, 0xd7, 0xc8, 0x53, 0xc6, 0xb7, 0x9f, 0xc4, 0xb1, 0xb5, 0x59, 0x81, 0xca}},
                     .number = "10402",
                     .title = "库存商品明细账"}, .make = MakeReport<Rpt10402>},
    {.description = {.programmaticId = "TOVStockRpt.Rpt10403",
                     .classId = {{0x4f, 0x19, 0x4d, 0x5f, 0xeb, 0x14, 0x50, 0x5e, 0x9c, 0x6d, 0x53, 0x5b, 0x70, 0x5f, 0xf8, 0xa7}},
                     .number = "10403",
                     .title = "其他出入库单关联表"}, .make = MakeReport<Rpt10403>},
    {.description = {.programmaticId = "TOVStockRpt.Rpt10411",
                     .classId = {{0xe7, 0xd8, 0xbb, 0x32, 0x72, 0x89, 0x55, 0xa3, 0x9f, 0x1e, 0x4a, 0x37, 0x41, 0x1a, 0x78, 0x5c}},
                     .number = "10411",
                     .title = "保质期清单"}, .make = MakeReport<Rpt10411>},
    {.description = {.programmaticId = "TOVStockRpt.Rpt10412",
                     .classId = {{0x7a, 0x90, 0x32, 0x16, 0xc2, 0xcd, 0x56, 0x80, 0x84, 0xcb, 0x9e, 0xfc, 0xac, 0x85, 0xac, 0xc1}},
                     .number = "10412",
                     .title = "商品收发汇总表"}, .make = MakeReport<Rpt10412>},
    {.description = {.programmaticId = "TOVStockRpt.Rpt10413",
                     .classId = {{0x29, 0xfe, 0x90, 0xf6, 0xda, 0x69, 0x5d, 0xd1, 0x9a, 0x0e, 0x28, 0x5f, 0x64, 0x61, 0xed, 0x14}},
                     .number = "10413",
                     .title = "商品收发明细表"}, .make = MakeReport<Rpt10413>},
    {.description = {.programmaticId = "TOVStockRpt.Rpt10414",
                     .classId = {{0x25, 0x54, 0x9d, 0xa8, 0x7b, 0x99, 0x59, 0x2b, 0xac, 0xa4, 0xaa, 0x64, 0xae, 0x4f, 0x04, 0x4a}},
                     .number = "10414",
                     .title = "商品超储短缺表"}, .make = MakeReport<Rpt10414>},
    {.description = {.programmaticId = "TOVStockRpt.Rpt10415",
                     .classId = {{0x6b, 0xbc, 0x16, 0x70, 0xde, 0xd1, 0x54, 0x8a, 0xb7, 0x14, 0x96, 0x5a, 0xe5, 0x81, 0xf0, 0x41}},
                     .number = "10415",
                     .title = "采购价格分析表"}, .make = MakeReport<Rpt10415>},
    {.description = {.programmaticId = "TOVStockRpt.Rpt10416",
                     .classId = {{0x5d, 0xec, 0xa1, 0x71, 0x18, 0xbc, 0x51, 0x3c, 0x97, 0x80, 0xd8, 0x08, 0xc3, 0x43, 0x9e, 0xa3}},
                     .number = "10416",
                     .title = "批号管理商品收发汇总表"}, .make = MakeReport<Rpt10416>},
    {.description = {.programmaticId = "TOVStockRpt.Rpt10417",
                     .classId = {{0x28, 0x9b, 0xf6, 0xa1, 0x9a, 0x03, 0x5d, 0x07, 0xb5, 0x1a, 0x90, 0xd4, 0xce, 0x6d, 0x95, 0x5b}},
                     .number = "10417",
                     .title = "批号管理商品收发明细表"}, .make = MakeReport<Rpt10417>},
    {.description = {.programmaticId = "TOVStockRpt.Rpt10418",
                     .classId = {{0x6f, 0x33, 0x75, 0x92, 0xa8, 0xd9, 0x5d, 0x35, 0x84, 0x41, 0x26, 0xe7, 0xe1, 0x9b, 0xa8, 0x99}},
                     .number = "10418",
                     .title = "S/N号跟踪分析表"}, .make = MakeReport<Rpt10418>},
    {.description = {.programmaticId = "TOVStockRpt.Rpt10424",
                     .classId = {{0xf2, 0x6d, 0x31, 0x83, 0xb9, 0x19, 0x51, 0xc5, 0x98, 0x79, 0x40, 0x59, 0xc5, 0x75, 0x99, 0xe0}},
                     .number = "10424",
                     .title = "可用库存查询表"}, .make = MakeReport<Rpt10424>},
};
// clang-format on

}  // namespace

std::span<const ServedClass> ServedClasses() { return kClasses; }

Ref<Object> CreateServed(const ServedClass& served) { return served.make(); }

}  // namespace component
