#include "tests/books/services/SmallBook.h"

#include <random>

#include "books/schema/Schema.h"
#include "platform/value/Date.h"

namespace books::test {
namespace {

constexpr std::string_view kRows = R"sql(
INSERT INTO base_data (id, class_id, parent_id, number, short_number, name, detail, disabled, right_users) VALUES
  (40, 4, NULL, '01', '01', '食品', 0, 0, ''),
  (41, 4, 40, '01.001', '001', '青岛啤酒', 1, 0, ''),
  (42, 4, 40, '01.002', '002', '矿泉水', 1, 0, ''),
  (43, 4, 40, '01.003', '003', '饼干', 1, 0, ''),
  (44, 4, 40, '01.004', '004', '停售糖果', 1, 1, ''),
  (60, 4, NULL, '02', '02', '日用', 0, 0, ''),
  (45, 4, 60, '02.001', '005', '毛巾', 1, 0, ''),
  (46, 4, 60, '02.002', '006', '拖把', 1, 0, ''),
  (47, 4, 60, '02.003', '007', '脸盆', 1, 0, ''),
  (48, 4, 60, '02.004', '008', '水桶', 1, 0, ''),
  (49, 4, 60, '02.005', '009', '牙刷', 1, 0, ''),
  (50, 5, NULL, '01', '01', '华东', 0, 0, ''),
  (51, 5, 50, '01.01', 'S1', '上海仓', 1, 0, '2,7'),
  (52, 5, 50, '01.02', 'S2', '杭州仓', 1, 0, '12'),
  (53, 5, NULL, '02', 'S3', '北京仓', 1, 0, '7'),
  (54, 5, NULL, '03', 'S4', '赠品仓', 1, 1, ''),
  (70, 8, NULL, '01', '01', '青岛啤酒厂', 1, 0, '');
INSERT INTO unit (id, name) VALUES (1, '瓶'), (2, '箱'), (3, '个');
INSERT INTO item (id, model, barcode, unit_id, aux_unit_id, batch_managed, min_quantity, max_quantity) VALUES
  (41, '500ml', '6901234', 1, 2, 1, 100000000, 500000000),
  (42, '', '', 1, NULL, 0, 0, 50000000),
  (43, '', '', 3, NULL, 0, 0, 0),
  (44, '', '', 3, NULL, 0, 10000000, 20000000),
  (45, '', '', 3, NULL, 0, 10000000, 20000000),
  (46, '', '', 3, NULL, 0, 0, 0),
  (47, '', '', 3, NULL, 0, 10000000, 20000000),
  (48, '', '', 3, NULL, 0, 10000000, 20000000),
  (49, '50%', '', 3, NULL, 0, 10000000, 0);
INSERT INTO warehouse (id, type_code) VALUES (51, 500), (52, 500), (53, 500), (54, 501);
INSERT INTO item_limit (item_id, warehouse_id, min_quantity, max_quantity) VALUES
  (43, 51, 10000000, 20000000), (43, 53, 5000000, 0), (49, 52, 4000000, 8000000);
INSERT INTO batch (id, item_id, number, production_date, shelf_life_days) VALUES
  (1, 41, 'B001', 46027, 365), (2, 41, 'B002', NULL, 0), (3, 41, 'B010', NULL, 0);
INSERT INTO stock (item_id, warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount) VALUES
  (41, 51, 1, 0, 40000000, 3333333, 0), (41, 51, 2, 0, 20000000, 1666667, 0),
  (41, 52, 1, 0, 30000000, 2500000, 0), (41, 53, 2, 0, 5000000, 416667, 0),
  (42, 51, 0, 0, 30500000, 0, 0), (42, 54, 0, 0, 20000000, 0, 0),
  (43, 51, 0, 0, 25000000, 0, 0), (43, 53, 0, 0, 3000000, 0, 0),
  (45, 51, 0, 0, 15000000, 0, 0), (46, 51, 0, 0, 1000000000, 0, 0),
  (47, 51, 0, 0, 20000000, 0, 0), (48, 51, 0, 0, 10000000, 0, 0);
INSERT INTO book_user (id, name, restricted, disabled) VALUES
  (1, 'admin', 0, 0), (2, '张三', 1, 0), (7, '李四', 1, 0), (9, '离职', 0, 1), (12, '王五', 1, 0);
INSERT INTO system_profile (category, key, value) VALUES
  ('IC', 'StartYear', '2025'), ('IC', 'StartPeriod', '2'), ('IC', 'CurrentYear', '2026'),
  ('IC', 'CurrentPeriod', '11'), ('IC', 'CalculateType', '1');
)sql";

}  // namespace

SmallBook::SmallBook() {
  std::random_device random;
  folder_ = std::filesystem::temp_directory_path() /
            ("small-book-" + std::to_string(random()) + std::to_string(random()));
  std::filesystem::create_directories(folder_);
  file_ = folder_ / "small.book";
  database::Connection connection = schema::CreateBook(file_);
  connection.RunScript(kRows);
  schema::RebuildTrees(connection);
  schema::AddCalendarYears(connection, 2025, 2026);
}

SmallBook::~SmallBook() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

database::Connection SmallBook::Write() const {
  return schema::OpenBook(file_, database::Access::kReadWrite);
}

}  // namespace books::test
