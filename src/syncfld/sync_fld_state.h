// What a CSyncFldCtl object holds: the field lists of the member files and of the master. Shared by
// the files of this folder; nothing else includes it.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "syncfld/field_list.h"
#include "syncfld/field_tables.h"
#include "tqutil/siblings.h"
#include "tqutil/syncfld.h"

namespace tq {

// The fields of one file. `main` is what mode 0 shows, `second` the fields of the second sync
// table.
struct tSYFL_FILEINFO {
  FieldList main;
  FieldList second;
  short mainVisible = 0;  // master only: its visible fields stand first
  short secondVisible = 0;
  // What the member was added with; the master's are empty.
  char fldFile[TQ_PATH_SIZE] = {};
  char memberText[TQ_PATH_SIZE] = {};
  char tmpFileO[TQ_PATH_SIZE] = {};
  char tmpFileN[TQ_PATH_SIZE] = {};
  short trFlg[TQ_FLG_COUNT] = {};
  short appType = 0;
  short appType2 = 0;  // stands for the application type where that is 0
};

// Fields that are in every list whatever the field file and the database say.
constexpr bool is_in_every_list(short fldId) {
  return (fldId >= 970 && fldId <= 974) || fldId == 999;
}

// Whether the fields of a table belong to the address book, by the table's name.
bool is_address_table(std::string_view table);

// A field as a list of the main table begins it: id, unlimited type and table.
tSYFL_FLDINFO new_field(short fldId, std::string_view table);
// Appends a field to both lists of a file; in the second one it belongs to the second sync table.
void append_to_second(tSYFL_FILEINFO& of, tSYFL_FLDINFO field);

// The search table of a field in an ordinary file; -1 for a field without a row.
short search_table(short fldId);

// The form in which the master keeps values of a compare group; see SyflGetMstDataId.
short master_form(short cmpGrp);

// Data ids by field id, with what a field beyond them has.
struct DataIds {
  const short* ids;
  std::size_t size;
  short beyond;

  short at(short fldId) const {
    const auto id = static_cast<std::uint16_t>(fldId);
    return id < size ? ids[id] : beyond;
  }
};

// The records of a field file, as `fldcom` reads it. Nothing when it cannot be opened.
class FieldRecords {
 public:
  explicit FieldRecords(const char* field_file);
  ~FieldRecords();
  FieldRecords(const FieldRecords&) = delete;
  FieldRecords& operator=(const FieldRecords&) = delete;

  bool next(tFLDCOM_FLDREC& record) const;

 private:
  const tFLDCOM_API& api_;
  void* file_;
};

}  // namespace tq

struct CSyncFldCtl::State {
  // Null for an index out of range.
  const tq::tSYFL_FILEINFO* file(std::int32_t index) const {
    const bool there = index >= 0 && static_cast<std::size_t>(index) < files.size();
    return there ? &files[static_cast<std::size_t>(index)] : nullptr;
  }
  // The list that the current mode shows.
  const tq::FieldList& list(const tq::tSYFL_FILEINFO& of) const {
    return mode == 0 ? of.main : of.second;
  }
  const tq::FieldList* list(std::int32_t index) const {
    const tq::tSYFL_FILEINFO* of = file(index);
    return of == nullptr ? nullptr : &list(*of);
  }
  short master_visible() const { return mode == 0 ? master.mainVisible : master.secondVisible; }
  bool is_master_field(short fldId) const {
    const short pos = list(master).find(fldId);
    return pos >= 0 && pos < master_visible();
  }

  // The member file that is being built (member_fields.cpp).
  void mMakeFldInfo(tq::tSYFL_FILEINFO& of);
  void read_definitions(std::int32_t count);

  // Its special fields (special_fields.cpp).
  void add_special_fields(tq::tSYFL_FILEINFO& of, short appNo) const;
  bool mSyflIsFldId(const tq::tSYFL_FILEINFO& of, short fldId) const;
  void mAddMailSpFld(tq::tSYFL_FILEINFO& of) const;
  void mAddMailSpFld2(tq::tSYFL_FILEINFO& of) const;
  void mAddMailSpFld3(tq::tSYFL_FILEINFO& of) const;
  void mAddMugenJoinSpFld(tq::tSYFL_FILEINFO& of) const;
  void mAddFKanaSpFld(tq::tSYFL_FILEINFO& of) const;
  std::string_view mGetTblName(short fldId) const;
  tq::tSYFL_FLDINFO special_field(short fldId, short special) const;

  // The master (master_fields.cpp).
  void read_master(const char* field_file);
  void mMakeCmpItemTblKey();

  // Takes a file that is built; std::bad_alloc leaves everything as it was.
  void add(tq::tSYFL_FILEINFO&& of);
  void clear_files();

  std::vector<tq::tSYFL_FILEINFO> files;
  std::vector<tq::DataIds> data_ids[2];  // by mode and file: what SyflGetDataId answers
  std::size_t capacity = 0;              // most files that fit
  tq::tSYFL_FILEINFO master;
  std::vector<char> cmpItems;  // by row of s_fldAttrTbl: 1 where the master shows the field
  short firstKei = 0;          // unlimited groups of fields 512 and 596
  short secondKei = 0;
  short mode = 0;

  // The database's field definitions as the file that is being built found them.
  struct Definition {
    short fldId;
    char table[tq::kTableNameSize];
  };
  std::vector<Definition> definitions;
  tq::IdIndex definition_of;
};
