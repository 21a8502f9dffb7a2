#include "books/schema/Version1.h"

namespace books::schema {

// The names that report components use when they send statements of their own, and the movements that bills
// would make if they were audited. A bill comes before its entries (CROSS JOIN keeps the order), so that a
// condition on bills, such as those few that are not audited, is answered from their indexes.
const std::string_view kVersion1Views = R"sql(
CREATE VIEW t_Item AS
  SELECT id AS FItemID, class_id AS FItemClassID, COALESCE(parent_id, 0) AS FParentID, number AS FNumber,
         short_number AS FShortNumber, number AS FFullNumber, name AS FName, level AS FLevel,
         detail AS FDetail, disabled AS FDeleted, right_users AS FRightUserID
  FROM base_data;

CREATE VIEW t_ItemClass AS
  SELECT id AS FItemClassID, name AS FName
  FROM base_class;

CREATE VIEW t_Stock AS
  SELECT b.id AS FItemID, b.number AS FNumber, b.short_number AS FShortNumber, b.name AS FName,
         b.right_users AS FRightUserID, w.type_code AS FTypeID
  FROM warehouse w
  JOIN base_data b ON b.id = w.id;

CREATE VIEW t_SystemProfile AS
  SELECT category AS FCategory, key AS FKey, value AS FValue
  FROM system_profile;

CREATE VIEW t_PeriodDate AS
  SELECT year AS FYear, number AS FPeriod, first_day AS FStartDate, last_day AS FEndDate
  FROM accounting_period;

CREATE VIEW ICCalFlag AS
  SELECT item_id AS FItemID
  FROM waiting_item;

CREATE VIEW bill_movement AS
  SELECT e.item_id AS item_id, b.date AS date,
         CASE c.kind WHEN 1 THEN 1 WHEN 5 THEN 2 WHEN 2 THEN 4 ELSE 3 END AS day_order, b.id AS bill_id,
         e.direction AS direction, e.line AS line, b.period AS period, b.bill_class AS bill_class,
         e.warehouse_id AS warehouse_id, COALESCE(e.batch_id, 0) AS batch_id, COALESCE(e.aux_id, 0) AS aux_id,
         e.quantity AS quantity, e.aux_quantity AS aux_quantity, e.amount AS entry_amount,
         b.audited AS audited
  FROM bill b
  CROSS JOIN bill_class c
  CROSS JOIN bill_entry e
  WHERE c.id = b.bill_class AND e.bill_id = b.id
  UNION ALL
  SELECT e.item_id, b.date, 3, b.id, 1, e.line, b.period, b.bill_class, e.to_warehouse_id,
         COALESCE(e.batch_id, 0), COALESCE(e.aux_id, 0), e.quantity, e.aux_quantity, e.amount, b.audited
  FROM bill b
  CROSS JOIN bill_entry e
  WHERE e.bill_id = b.id AND e.to_warehouse_id IS NOT NULL;

CREATE VIEW unaudited_movement AS
  SELECT item_id, date, day_order, bill_id, direction, line, period, bill_class, warehouse_id, batch_id,
         aux_id, quantity, aux_quantity
  FROM bill_movement
  WHERE audited = 0;
)sql";

// The names of the bill classes are those that the reports print as kinds of bill.
const std::string_view kVersion1Rows = R"sql(
INSERT INTO base_class (id, name) VALUES
  (1, '客户'), (2, '部门'), (3, '职员'), (4, '商品'), (5, '仓库'), (8, '供应商'), (10, '辅助属性');

INSERT INTO valuation_method (id, name) VALUES
  (77, '全月一次加权平均'), (78, '移动加权平均'), (79, '先进先出'), (80, '批次计价');

INSERT INTO bill_class (id, name, kind) VALUES
  (1020001, '采购订单', 0), (1020002, '采购收货', 1), (1020003, '估价入库', 1),
  (1020004, '采购返利单(返商品)', 1), (1020005, '采购返利单(返金额)', 5),
  (1030001, '销售订单', 0), (1030002, '销售发货', 2), (1030003, '委托代销', 2),
  (1030004, '销售返利单(返商品)', 2),
  (1040001, '其他入库', 1), (1040002, '其他出库', 2), (1040003, '盘盈入库', 1), (1040004, '盘亏损毁', 2),
  (1040005, '组装', 3), (1040006, '拆卸', 3), (1040007, '调拨', 4), (1040008, '调价', 5);

INSERT INTO book_state (id, balances_until) VALUES (1, NULL);
)sql";

}  // namespace books::schema
