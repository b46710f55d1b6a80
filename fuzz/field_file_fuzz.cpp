// A field file of any content, as a member of an application that gets special fields, as the
// master and in a list: what a list holds is found in it, by position and by field id. The last
// byte chooses the application and the mode.
#include <iterator>
#include <string>

#include "support/home.h"
#include "target.h"
#include "tqutil/csvinfo.h"
#include "tqutil/records.h"
#include "tqutil/syncfld.h"

namespace {

void check_member(const CSyncFldCtl& fields, short file) {
  for (short pos = 0; pos < fields.SyflGetFldCnt(file); ++pos) {
    const short fldId = fields.SyflGetFldId(file, pos);
    require(fields.SyflIsFldId(file, fldId) == 1);
    require(fields.SyflGetMugen(file, pos) == fields.SykyGetMugenType(fldId) || fldId == 0);
  }
  for (short fldId = -1; fldId <= 1000; ++fldId) {
    const bool there = fields.SyflIsFldId(file, fldId) == 1;
    const short own = fields.SyflGetDataIdS(file, fldId);
    const short stand_in = fields.SyflGetExtGrpFldIdOrg(file, fldId);
    require(there == (own >= 0));
    require(!there || stand_in == fldId);
    require(fields.SyflGetDataId(file, fldId) ==
            (there ? own : fields.SyflGetDataIdS(file, stand_in)));
  }
}

void check_master(const CSyncFldCtl& fields) {
  const short shown = fields.SyflGetMstFldCnt();
  const short all = fields.SyflGetMstFldCntMax();
  require(shown <= all);
  for (short pos = 0; pos < all; ++pos) {
    const short fldId = fields.SyflGetMstFldId(pos);
    require(fields.SyflGetDataType(fldId) >= 0);
    require(pos >= shown || fields.SyflIsMstFld(fldId) == 1);
  }
  for (short grp = 0; grp < 9; ++grp) {
    tSYNC_MSCH state{};
    short types = 0;
    while (fields.SykyGetMugenGrpNext(grp, &state) >= 0) ++types;
    require(types <= fields.SykyGetMugenGrpSizeMax());
  }
}

}  // namespace

void try_input(std::string_view input) {
  static const tq::test::TestHome home;
  home.write("fields\\2b\\x.FLD", input);
  std::string path = home.at("fields\\2b\\x.FLD");

  // The application and the mode in which the lists are built; one of each, or a run takes long.
  constexpr short kApplications[] = {0, 1, 7, 12, 47};
  const std::size_t choice = input.empty() ? 0 : static_cast<unsigned char>(input.back());
  CSyncFldCtl fields;
  fields.SyflSetMode(choice < 128 ? 0 : 1);
  fields.SyflCreateFileTbl(1);
  fields.SyflSetMstFileInfo(reinterpret_cast<const unsigned char*>(path.c_str()));
  check_master(fields);
  tSYNC_INFO info{};
  info.fldFile = path.data();
  info.appType = kApplications[choice % std::size(kApplications)];
  require(fields.SyflAddFileInfo(&info) == 0);
  for (const short mode : {short{0}, short{1}}) {
    fields.SyflSetMode(mode);
    check_member(fields, 0);
  }

  CCsvInfoCtl list;
  require(list.GetCsvFldInfoInit2() == 0);
  short number = -1;
  short number2 = -1;
  char found[TQ_PATH_SIZE] = "";
  while (list.GetCsvFldInfoNext2(&number, &number2, found) == 0) require(number >= 0);
}
