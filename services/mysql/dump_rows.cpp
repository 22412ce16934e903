// The rows of a table: one INSERT a page.
#include <algorithm>

#include "base/text.h"
#include "services/mysql/dump_writer.h"
#include "services/mysql/file_errors.h"
#include "services/mysql/sql_text.h"

namespace kestrelon {
namespace {

constexpr int kChunk = 4096;

}  // namespace

void DumpWriter::write_rows(std::unique_ptr<RecordSet> reuse, const std::wstring& name) {
  if (options_.records_in_block < 1)
    throw DbError(kInvalidArgument, L"Chamada de procedimento ou argumento inválido.");
  const auto rows =
      connection_.open_rows(std::move(reuse), L"SELECT * FROM " + quoted_name(name) + L";");
  if (rows->eof()) return;
  field_types_.resize(rows->field_count());
  for (size_t i = 0; i < field_types_.size(); ++i) field_types_[i] = rows->field_type(i);

  write_comment(L"Dados da tabela: " + quoted_name(name));
  lines_.line(L"LOCK TABLES " + quoted_name(name) + L" WRITE;");
  insert_ = L"INSERT INTO " + quoted_name(name) + L" VALUES ";
  rows->set_page_size(options_.records_in_block);
  const int64_t pages = rows->page_count();
  for (int64_t page = 1; pages < 0 ? !rows->eof() : page <= pages; ++page) {
    observer_.progress(rows->record_count(), rows->absolute_position());
    rows->set_absolute_page(page);
    lines_.line(insert_);
    write_page(*rows);
    lines_.line(L"COMMIT;");
  }
  lines_.line(L"UNLOCK TABLES;");
  rows->close();
}

// A row for which there is no memory behind the others begins a page of its own.
bool DumpWriter::try_row(RecordSet& rows) {
  const size_t start = page_.size();
  const uint64_t altered = values_.altered();
  try {
    write_row(rows);
    return true;
  } catch (const std::bad_alloc&) {
    page_.resize(start);
    values_.forget_since(altered);
    return false;
  }
}

void DumpWriter::write_page(RecordSet& rows) {
  page_.clear();
  for (int counter = 1;; ++counter) {
    check_cancel();
    if (!try_row(rows)) {
      if (page_.empty()) throw out_of_memory_error();
      page_.back() = ';';  // in place of the comma behind the last row
      lines_.bytes(page_);
      lines_.line(L"COMMIT;");
      lines_.line(insert_);
      std::string().swap(page_);
      if (!try_row(rows)) throw out_of_memory_error();
    }
    rows.move_next();
    if (counter == options_.records_in_block || rows.eof() || rows.bof()) break;
    page_ += "),";
  }
  page_ += ");";
  lines_.bytes(page_);
}

void DumpWriter::write_row(RecordSet& rows) {
  page_.push_back('(');
  for (size_t field = 0; field < field_types_.size(); ++field) {
    if (field > 0) page_ += ", ";
    const int type = field_types_[field];
    if (ValueWriter::is_blob(type))
      write_blob(rows, field, type);
    else
      values_.append(page_, rows.value(field), type);
  }
}

// A chunk that cannot be read is passed over.
void DumpWriter::write_blob(RecordSet& rows, size_t field, int type) {
  const int64_t size = rows.actual_size(field);
  if (size <= 0 && rows.value(field).kind == DbValue::Kind::kNull) {
    values_.append(page_, {}, type);
    return;
  }
  observer_.status(L"Preparando campo blob...");
  values_.begin_blob(page_, type);
  int64_t read = 0;
  for (int64_t offset = 0; offset < size; offset += kChunk) {
    try {
      const std::string_view chunk = rows.get_chunk(field, kChunk);
      values_.append_blob_bytes(page_, chunk);
      read += static_cast<int64_t>(chunk.size());
    } catch (const DbError&) {
      // As told: the bytes are left out, and the blob counts as altered.
    }
    observer_.pump();
  }
  values_.end_blob(page_, false, read == size);
}

}  // namespace kestrelon
