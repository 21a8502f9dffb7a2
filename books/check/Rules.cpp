// Each rule is worked out from the documents by a query of its own, not by the code that posted them.
#include "books/check/Rules.h"

#include <array>

namespace books::check {
namespace {

// Quantities are shown in units, amounts with their decimals.
constexpr std::array kRules = {
    Rule{"period", R"sql(
      SELECT 'the day of the bill is not in its period', c.name || ' ' || b.number
      FROM bill b
      JOIN bill_class c ON c.id = b.bill_class
      JOIN accounting_period p ON p.period = b.period
      WHERE b.date < p.first_day OR b.date > p.last_day
      ORDER BY b.id)sql"},
    Rule{"period", R"sql(
      SELECT 'the bill lies before the start of accounting or after the last balances',
             c.name || ' ' || b.number
      FROM bill b
      JOIN bill_class c ON c.id = b.bill_class
      JOIN accounting_period p ON p.period = b.period
      WHERE b.audited = 1 AND (b.period > (SELECT balances_until FROM book_state)
        OR b.period < (SELECT CAST(y.value AS INTEGER) * 12 + CAST(n.value AS INTEGER) - 1
                       FROM system_profile y, system_profile n
                       WHERE y.category = 'IC' AND y.key = 'StartYear'
                         AND n.category = 'IC' AND n.key = 'StartPeriod'))
      ORDER BY b.id)sql"},
    Rule{"period", R"sql(
      SELECT 'period ' || p.year || '-' || p.number || ' does not begin on the day after the one before ends',
             NULL
      FROM accounting_period p
      JOIN accounting_period q ON q.period = p.period - 1
      WHERE p.first_day <> q.last_day + 1
      ORDER BY p.period)sql"},
    Rule{"assembly", R"sql(
      SELECT 'what comes in carries another cost than what goes out', c.name || ' ' || b.number
      FROM bill b
      JOIN bill_class c ON c.id = b.bill_class
      JOIN bill_entry e ON e.bill_id = b.id
      JOIN warehouse w ON w.id = e.warehouse_id
      JOIN movement m ON m.item_id = e.item_id AND m.date = b.date AND m.day_order = 3 AND m.bill_id = b.id
                     AND m.line = e.line
      WHERE b.audited = 1 AND c.kind = 3
      GROUP BY b.id, c.name, b.number
      HAVING SUM(m.direction * m.amount) <> 0 AND MAX(w.type_code) = 500
         AND NOT EXISTS (SELECT 1 FROM waiting_item)
      ORDER BY b.id)sql"},
    Rule{"batch", R"sql(
      SELECT 'item ' || i.number || ' moves with a batch of another item, ' || t.number,
             c.name || ' ' || b.number
      FROM bill_entry e
      JOIN batch t ON t.id = e.batch_id
      JOIN base_data i ON i.id = e.item_id
      JOIN bill b ON b.id = e.bill_id
      JOIN bill_class c ON c.id = b.bill_class
      WHERE t.item_id <> e.item_id
      ORDER BY e.item_id, b.id)sql"},
    Rule{"batch", R"sql(
      SELECT 'item ' || d.number || CASE i.batch_managed WHEN 1 THEN ' is kept by batch and moves without one'
                                                         ELSE ' has no batches and moves with one' END,
             c.name || ' ' || b.number
      FROM bill_entry e
      JOIN item i ON i.id = e.item_id
      JOIN base_data d ON d.id = e.item_id
      JOIN bill b ON b.id = e.bill_id
      JOIN bill_class c ON c.id = b.bill_class
      WHERE b.audited = 1 AND c.kind <> 5 AND i.batch_managed <> CASE WHEN e.batch_id IS NULL THEN 0 ELSE 1 END
      ORDER BY e.item_id, b.id)sql"},
    Rule{"serial", R"sql(
      SELECT 'line ' || e.line || ' of item ' || d.number || ' does not list one serial number a piece',
             c.name || ' ' || b.number
      FROM item i
      JOIN bill_entry e ON e.item_id = i.id
      JOIN base_data d ON d.id = e.item_id
      JOIN bill b ON b.id = e.bill_id
      JOIN bill_class c ON c.id = b.bill_class
      WHERE i.serial_managed = 1
        AND ABS(e.quantity) <> 1000000 * (SELECT COUNT(*) FROM bill_serial s
                                          JOIN serial n ON n.id = s.serial_id AND n.item_id = e.item_id
                                          WHERE s.bill_id = e.bill_id AND s.line = e.line)
      ORDER BY b.id, e.line)sql"},
    Rule{"serial", R"sql(
      SELECT 'serial number ' || n.number || CASE x.step WHEN 1 THEN ' comes in while it is in stock'
                                                         ELSE ' goes out while it is not in stock' END,
             x.document
      FROM (
        SELECT s.serial_id AS serial_id, y.step AS step, c.name || ' ' || b.number AS document,
               LAG(y.step) OVER (PARTITION BY s.serial_id
                                 ORDER BY b.date, CASE c.kind WHEN 1 THEN 1 WHEN 5 THEN 2 WHEN 2 THEN 4 ELSE 3 END,
                                          b.id, e.direction, e.line) AS before
        FROM bill_serial s
        JOIN bill b ON b.id = s.bill_id
        JOIN bill_class c ON c.id = b.bill_class
        JOIN bill_entry e ON e.bill_id = s.bill_id AND e.line = s.line
        JOIN (SELECT -1 AS step UNION ALL SELECT 1) y
          ON y.step = CASE WHEN e.quantity > 0 THEN e.direction ELSE -e.direction END
        WHERE b.audited = 1 AND e.to_warehouse_id IS NULL
      ) x
      JOIN serial n ON n.id = x.serial_id
      WHERE x.step = COALESCE(x.before, -1)
      ORDER BY x.serial_id)sql"},
    Rule{"serial", R"sql(
      SELECT 'serial number ' || n.number || ' of item ' || d.number
               || ' has another state or warehouse than its last movement left it in',
             NULL
      FROM serial n
      JOIN base_data d ON d.id = n.item_id
      LEFT JOIN (
        SELECT s.serial_id AS serial_id,
               CASE WHEN e.to_warehouse_id IS NOT NULL THEN 1
                    WHEN e.direction * e.quantity > 0 THEN 1 ELSE 2 END AS state,
               CASE WHEN e.to_warehouse_id IS NOT NULL THEN e.to_warehouse_id
                    WHEN e.direction * e.quantity > 0 THEN e.warehouse_id END AS warehouse_id,
               ROW_NUMBER() OVER (PARTITION BY s.serial_id
                                  ORDER BY b.date DESC,
                                           CASE c.kind WHEN 1 THEN 1 WHEN 5 THEN 2 WHEN 2 THEN 4 ELSE 3 END DESC,
                                           b.id DESC, e.direction DESC, e.line DESC) AS age
        FROM bill_serial s
        JOIN bill b ON b.id = s.bill_id
        JOIN bill_class c ON c.id = b.bill_class
        JOIN bill_entry e ON e.bill_id = s.bill_id AND e.line = s.line
        WHERE b.audited = 1
      ) l ON l.serial_id = n.id AND l.age = 1
      WHERE n.state <> COALESCE(l.state, 0) OR COALESCE(n.warehouse_id, 0) <> COALESCE(l.warehouse_id, 0)
      ORDER BY n.id)sql"},
    Rule{"order", R"sql(
      SELECT 'order ' || o.number || ' line ' || l.line || ' counts other deliveries than its bills made',
             c.name || ' ' || o.number
      FROM order_entry l
      JOIN order_bill o ON o.id = l.order_id
      JOIN bill_class c ON c.id = o.bill_class
      LEFT JOIN (SELECT e.order_id AS order_id, e.order_line AS order_line, SUM(e.quantity) AS quantity
                 FROM bill_entry e JOIN bill b ON b.id = e.bill_id
                 WHERE b.audited = 1 AND e.order_id IS NOT NULL
                 GROUP BY e.order_id, e.order_line) d ON d.order_id = l.order_id AND d.order_line = l.line
      WHERE l.delivered_quantity <> COALESCE(d.quantity, 0)
      ORDER BY l.order_id, l.line)sql"},
    Rule{"tree", R"sql(
      SELECT 'base data ' || d.number || CASE
               WHEN p.class_id <> d.class_id THEN ' has a parent of another class'
               WHEN p.detail <> 0 THEN ' has a parent that is no group'
               ELSE ' does not begin with the number of its parent, ' || p.number END,
             NULL
      FROM base_data d
      JOIN base_data p ON p.id = d.parent_id
      WHERE p.class_id <> d.class_id OR p.detail <> 0
         OR SUBSTR(d.number, 1, LENGTH(p.number) + 1) <> p.number || '.'
      ORDER BY d.id)sql"},
    Rule{"tree", R"sql(
      SELECT 'base data ' || d.number || ' has a level or ancestors that do not fit its parent', NULL
      FROM base_data d
      LEFT JOIN base_data p ON p.id = d.parent_id
      WHERE d.level <> COALESCE(p.level, 0) + 1
         OR d.level - 1 <> (SELECT COUNT(*) FROM base_ancestor a WHERE a.id = d.id)
         OR (d.parent_id IS NOT NULL AND NOT EXISTS (
               SELECT 1 FROM base_ancestor a
               WHERE a.id = d.id AND a.level = d.level - 1 AND a.ancestor_id = d.parent_id))
      ORDER BY d.id)sql"},
    Rule{"tree", R"sql(
      SELECT 'base data ' || d.number || ' is ' || CASE WHEN d.detail = 0 THEN 'a group' ELSE 'of another class' END
               || ' and has the facts of an item or a warehouse',
             NULL
      FROM base_data d
      WHERE (d.id IN (SELECT id FROM item) AND (d.class_id <> 4 OR d.detail = 0))
         OR (d.id IN (SELECT id FROM warehouse) AND (d.class_id <> 5 OR d.detail = 0))
      ORDER BY d.id)sql"},
    Rule{"tree", R"sql(
      SELECT 'base data ' || d.number || ' lacks the facts of an item or a warehouse', NULL
      FROM base_data d
      WHERE d.detail = 1 AND ((d.class_id = 4 AND d.id NOT IN (SELECT id FROM item))
                           OR (d.class_id = 5 AND d.id NOT IN (SELECT id FROM warehouse)))
      ORDER BY d.id)sql"},
    Rule{"gift", R"sql(
      SELECT 'item ' || d.number || ' has an amount in gift warehouse ' || g.number, NULL
      FROM stock s
      JOIN warehouse w ON w.id = s.warehouse_id AND w.type_code = 501
      JOIN base_data d ON d.id = s.item_id
      JOIN base_data g ON g.id = s.warehouse_id
      WHERE s.amount <> 0
      ORDER BY s.item_id)sql"},
};

}  // namespace

std::span<const Rule> Rules() { return kRules; }

}  // namespace books::check
