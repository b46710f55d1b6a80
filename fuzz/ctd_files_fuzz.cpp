// Candidate and merge files of any content: the input up to the first byte FF is the one, the rest
// the other. Whatever was read must be writable, and what is written must read back.
#include <string>

#include "support/home.h"
#include "target.h"
#include "tqutil/ctd.h"

void try_input(std::string_view input) {
  static const tq::test::TestHome home;
  const std::size_t end = input.find('\xFF');
  home.write("work\\~CTDINFO.TMP", input.substr(0, end));
  home.write("work\\~MRGINFO.TMP", end == input.npos ? "" : input.substr(end + 1));

  CCtdCtl ctd;
  ctd.AddCtdData("001002000000001", 1, "001001000000001", nullptr);
  require(ctd.ReadCtdFile() == 0);
  std::string text(20000, 'x');
  for (int32_t i = 0; i < ctd.GetCtdRecCnt(); ++i) {
    require(ctd.GetCtdRecTitleSize(i) < TQ_CTD_TITLE_SIZE);
    for (int32_t field = 0; field < ctd.GetCtdFldCnt(); ++field) {
      require(ctd.GetCtdFldStr(i, field, text.data()) == 0);
    }
  }
  static_cast<void>(ctd.ReadMargFile());
  require(ctd.WriteCtdFile() == 0 && ctd.WriteMargFile() == 0);
  const int32_t records = ctd.GetCtdRecCnt();
  require(ctd.ReadMargFile() == 0 && ctd.ReadCtdFile() == 0);
  // A title of a table without fields may be taken for more; otherwise nothing is lost.
  require(ctd.GetCtdRecCnt() == records || ctd.GetCtdFldCnt() == 0);
}
