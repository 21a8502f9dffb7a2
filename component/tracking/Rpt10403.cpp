#include "component/tracking/Rpt10403.h"

#include <vector>

#include "component/tracking/frmFirter10403.h"

namespace component {
namespace {

using enum ColumnType;

constexpr Column kColumns[] = {
    {.caption = "单据日期$", .type = kText, .field = "FDate"},
    {.caption = "单据类型$", .type = kText, .field = "FBillType"},
    {.caption = "单据编号$", .type = kText, .field = "FBillNo"},
    {.caption = "客户代码$", .type = kText, .field = "FCustNumber", .visible = false},
    {.caption = "客户名称$", .type = kText, .field = "FCustName"},
    {.caption = "供应商代码$", .type = kText, .field = "FSupplyNumber", .visible = false},
    {.caption = "供应商名称$", .type = kText, .field = "FSupplyName"},
    {.caption = "部门代码$", .type = kText, .field = "FDeptNumber", .visible = false},
    {.caption = "部门名称$", .type = kText, .field = "FDeptName"},
    {.caption = "业务员代码$", .type = kText, .field = "FEmpNumber", .visible = false},
    {.caption = "业务员名称$", .type = kText, .field = "FEmpName"},
    {.caption = "商品代码$", .type = kText, .field = "FItemNumber"},
    {.caption = "商品名称$", .type = kText, .field = "FItemName"},
    {.caption = "规格型号$", .type = kText, .field = "FModel"},
    {.caption = "辅助属性$", .type = kText, .field = "FAuxName", .visible = false},
    {.caption = "批号$", .type = kText, .field = "FBatchNo", .visible = false},
    {.caption = "基本单位$", .type = kText, .field = "FUnit", .visible = false},
    {.caption = "单位$", .type = kText, .field = "FShowUnit"},
    {.caption = "辅助单位$", .type = kText, .field = "FSecUnit", .visible = false},

    {.caption = "入库+|+|+|+|+|",
     .second = "基本单位数量",
     .type = kQuantity,
     .field = "FInQty",
     .visible = false},
    {.second = "基本单位单价", .type = kPrice, .field = "FInPrice", .visible = false},
    {.second = "数量", .type = kQuantity, .field = "FInShowQty"},
    {.second = "单价", .type = kPrice, .field = "FInShowPrice"},
    {.second = "辅助数量", .type = kQuantity, .field = "FInSecQty", .visible = false},
    {.second = "金额", .type = kAmount, .field = "FInAmount"},

    {.caption = "出库+|+|+|+|+|",
     .second = "基本单位数量",
     .type = kQuantity,
     .field = "FOutQty",
     .visible = false},
    {.second = "基本单位单价", .type = kPrice, .field = "FOutPrice", .visible = false},
    {.second = "数量", .type = kQuantity, .field = "FOutShowQty"},
    {.second = "单价", .type = kPrice, .field = "FOutShowPrice"},
    {.second = "辅助数量", .type = kQuantity, .field = "FOutSecQty", .visible = false},
    {.second = "金额", .type = kAmount, .field = "FOutAmount"},

    {.caption = "备注$", .type = kText, .field = "FNote", .visible = false},
};

constexpr DataRight kCustomers = {.table = "t_Organization", .alias = "tog", .itemClass = "1"};
constexpr DataRight kSuppliers = {.table = "t_supplier", .alias = "ts", .itemClass = "8"};

// The entries of the dialog's list of account items that link to one kind of partner only.
constexpr std::int32_t kByCustomer = 0;
constexpr std::int32_t kBySupplier = 1;

constexpr ReportFacts kFacts = {
    .number = "10403",
    .name = "其他出入库单关联表",
    .property = 4,
    .frozenColumn = 5,
    .hasDateRange = true,
    .dataComponent = "TOVMStockRpt.Data",
    .dataMethod = "GetRpt10403Data",
};

}  // namespace

Rpt10403::Rpt10403() : Exposed(kFacts) {}

void Rpt10403::AddReportColumns() { AddColumns(kColumns); }

// A list by customers restricts the customers, one by suppliers the suppliers, every other one both.
void Rpt10403::WriteDataRight() {
  const std::int32_t linkedBy = platform::ToInt32(RequireFilter().Value("InvoiceStyle"));
  std::vector<DataRight> rights;
  if (linkedBy != kBySupplier) rights.push_back(kCustomers);
  if (linkedBy != kByCustomer) rights.push_back(kSuppliers);
  WriteRightClause("DataRightWhere", rights);
}

platform::Ref<TOVRptFilterDialog> Rpt10403::MakeDialog() { return platform::MakeRef<frmFirter10403>(); }

}  // namespace component
