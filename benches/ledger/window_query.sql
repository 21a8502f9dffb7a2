-- The rows of all pages of the ledger, as anybody would ask a database for them: to one in ten thousand as many
-- as the report has. The first and the last period stand for the question marks, 80 for goods that are costed
-- batch by batch.
WITH asked (first, last) AS (SELECT ?, ?),
lying AS (
  SELECT b.item_id, b.period, MAX(x.number) AS batch, SUM(b.quantity) AS quantity, SUM(b.amount) AS amount
  FROM balance b CROSS JOIN asked JOIN item i ON i.id = b.item_id
  LEFT JOIN batch x ON x.id = CASE WHEN i.valuation = 80 THEN b.batch_id END
  WHERE b.period BETWEEN first - 1 AND last
  GROUP BY b.item_id, b.period, CASE WHEN i.valuation = 80 THEN b.batch_id ELSE 0 END
  HAVING SUM(b.quantity) <> 0 OR SUM(b.amount) <> 0
),
moved AS (
  SELECT item_id, period, MAX(date) AS date,
         SUM(CASE WHEN direction > 0 THEN quantity ELSE 0 END) AS in_quantity,
         SUM(CASE WHEN direction > 0 THEN amount ELSE 0 END) AS in_amount,
         SUM(CASE WHEN direction < 0 THEN quantity ELSE 0 END) AS out_quantity,
         SUM(CASE WHEN direction < 0 THEN amount ELSE 0 END) AS out_amount
  FROM movement CROSS JOIN asked WHERE period BETWEEN first AND last GROUP BY item_id, period
),
grid AS (
  SELECT i.id AS item_id, p.period, p.first_day, p.last_day
  FROM item i CROSS JOIN asked CROSS JOIN accounting_period p WHERE p.period BETWEEN first AND last
),
opening AS (
  SELECT item_id, period + 1 AS period, SUM(quantity) AS quantity, SUM(amount) AS amount
  FROM balance CROSS JOIN asked WHERE period BETWEEN first - 1 AND last - 1 GROUP BY item_id, period
),
ledger AS (
  SELECT g.item_id, g.period, 1 AS kind, g.first_day AS date, 0 AS place, -1 AS bill_id, 0 AS line,
         '' AS voucher, l.batch, '' AS note, '期初结存' AS name, 0 AS bill_class, 0 AS aux_id, '' AS number,
         0 AS in_quantity, 0 AS in_amount, 0 AS out_quantity, 0 AS out_amount,
         l.quantity AS quantity, l.amount AS amount
  FROM grid g
  LEFT JOIN lying l ON l.item_id = g.item_id AND l.period = g.period - 1
  LEFT JOIN moved m ON m.item_id = g.item_id AND m.period = g.period
  WHERE l.item_id IS NOT NULL OR m.item_id IS NOT NULL
  UNION ALL
  SELECT m.item_id, m.period, 2, m.date, ROW_NUMBER() OVER page, m.bill_id, m.line, b.voucher_number,
    x.number,
         b.explanation, c.name, m.bill_class, m.aux_id, b.number,
         CASE WHEN m.direction > 0 THEN m.quantity ELSE 0 END,
           CASE WHEN m.direction > 0 THEN m.amount ELSE 0 END,
         CASE WHEN m.direction < 0 THEN m.quantity ELSE 0 END,
           CASE WHEN m.direction < 0 THEN m.amount ELSE 0 END,
         COALESCE(o.quantity, 0) + SUM(m.direction * m.quantity) OVER page,
         COALESCE(o.amount, 0) + SUM(m.direction * m.amount) OVER page
  FROM movement m CROSS JOIN asked
  JOIN bill b ON b.id = m.bill_id
  JOIN bill_class c ON c.id = m.bill_class
  LEFT JOIN batch x ON x.id = m.batch_id
  LEFT JOIN opening o ON o.item_id = m.item_id AND o.period = m.period
  WHERE m.period BETWEEN first AND last
  WINDOW page AS (PARTITION BY m.item_id, m.period ORDER BY m.date, m.day_order, m.bill_id,
    m.direction, m.line
                  ROWS UNBOUNDED PRECEDING)
  UNION ALL
  SELECT item_id, period, 3, date, 0, -2, 0, '', '', '', '本期合计', 0, 0, '',
         in_quantity, in_amount, out_quantity, out_amount, 0, 0
  FROM moved
  UNION ALL
  SELECT g.item_id, g.period, 4, g.last_day, 0, -3, 0, '', l.batch, '', '期末结存', 0, 0, '', 0, 0, 0, 0,
         l.quantity, l.amount
  FROM grid g
  LEFT JOIN lying l ON l.item_id = g.item_id AND l.period = g.period
  LEFT JOIN moved m ON m.item_id = g.item_id AND m.period = g.period
  WHERE l.item_id IS NOT NULL OR m.item_id IS NOT NULL
  UNION ALL
  SELECT item_id, MAX(period), 5, MAX(date), 0, -2, 0, '', '', '', '本年累计', 0, 0, '',
         SUM(in_quantity), SUM(in_amount), SUM(out_quantity), SUM(out_amount), 0, 0
  FROM moved GROUP BY item_id, period / 12
)
SELECT d.number, l.period / 12, l.kind, l.period % 12 + 1, l.period / 12 || '.' || (l.period % 12 + 1),
  l.bill_id,
       l.line, l.date, l.voucher, l.batch, l.number, l.name, l.bill_class, a.name, i.quantity_decimals,
       i.price_decimals, l.in_quantity / 1e6,
       CASE WHEN l.in_quantity = 0 THEN 0 ELSE l.in_amount * 100.0 / l.in_quantity END, l.in_amount, 0,
       l.out_quantity / 1e6,
       CASE WHEN l.out_quantity = 0 THEN 0 ELSE l.out_amount * 100.0 / l.out_quantity END,
         l.out_amount, 0,
       l.quantity / 1e6, CASE WHEN l.quantity = 0 THEN 0 ELSE l.amount * 100.0 / l.quantity END,
         l.amount, 0,
       l.note, CASE WHEN l.kind = 2 THEN 0 ELSE 101 END, d.name, i.model, v.name
FROM ledger l
JOIN base_data d ON d.id = l.item_id
JOIN item i ON i.id = l.item_id
JOIN valuation_method v ON v.id = i.valuation
LEFT JOIN base_data a ON a.id = l.aux_id
ORDER BY d.number, l.period, l.kind, l.place, l.batch
