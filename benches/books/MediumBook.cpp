#include "benches/books/MediumBook.h"

#include "books/schema/Schema.h"

namespace bench {
namespace {

constexpr const char* kContent = R"sql(
BEGIN;
INSERT INTO unit (id, name) VALUES (1, '个');
WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 12)
INSERT INTO base_data (id, class_id, number, short_number, name, right_users)
SELECT i, 5, printf('%02d', i), printf('%02d', i), '仓库', CASE WHEN i % 2 = 0 THEN '12' ELSE '3,12' END FROM n;
INSERT INTO warehouse (id) SELECT id FROM base_data;
WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000)
INSERT INTO base_data (id, class_id, number, short_number, name)
SELECT 1000 + i, 4, printf('%02d.%04d', i % 20, i), printf('%04d', i), printf('商品%d', i) FROM n;
INSERT INTO item (id, unit_id, model, min_quantity, max_quantity)
SELECT id, 1, printf('M%d', id), 2350000000, 2450000000 FROM base_data WHERE class_id = 4;
INSERT INTO item_limit (item_id, warehouse_id, min_quantity, max_quantity)
SELECT i.id, w.id, 190000000, 210000000 FROM item i, warehouse w;
INSERT INTO batch (id, item_id, number)
SELECT i.id * 2 + b.value, i.id, printf('B%d', b.value) FROM item i, (SELECT 0 AS value UNION SELECT 1) b;
INSERT INTO stock (item_id, warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount)
SELECT b.item_id, w.id, b.id, 0, (b.id * 7919 + w.id * 104729) % 200 * 1000000, 0, 0 FROM batch b, warehouse w;
COMMIT;
)sql";

class BookFile {
 public:
  BookFile() : path_(std::filesystem::path(BENCH_BINARY_DIR) / "medium-bench.book") {
    Remove();
    books::schema::CreateBook(path_).RunScript(kContent);
  }
  ~BookFile() { Remove(); }
  BookFile(const BookFile&) = delete;
  BookFile& operator=(const BookFile&) = delete;

  const std::filesystem::path& Path() const { return path_; }

 private:
  void Remove() const {
    for (const char* ending : {"", "-wal", "-shm"}) std::filesystem::remove(path_.string() + ending);
  }

  std::filesystem::path path_;
};

}  // namespace

const std::filesystem::path& MediumBookFile() {
  static const BookFile file;
  return file.Path();
}

const books::Book& MediumBook() {
  static const books::Book book = books::Book::Open(MediumBookFile());
  return book;
}

}  // namespace bench
