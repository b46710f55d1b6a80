// Sibling tables of a test's own. Entries that stay null are the built-in ones.
#pragma once

#include <gtest/gtest.h>

#include "tqutil/siblings.h"

namespace tq::test {

struct OwnSiblings {
  explicit OwnSiblings(void* context) {
    const auto begin = [&](auto& table) {
      table.size = sizeof table;
      table.context = context;
    };
    begin(fldcom);
    begin(recdb);
    begin(adrconv);
    begin(errbox);
    begin(hstytmp);
    begin(dialog);
  }
  ~OwnSiblings() { tqSetSiblings(nullptr); }
  OwnSiblings(const OwnSiblings&) = delete;
  OwnSiblings& operator=(const OwnSiblings&) = delete;

  // Call it when the entries are set, and again when they have changed.
  void install() const {
    tTQ_SIBLINGS all{};
    all.size = sizeof all;
    all.fldcom = &fldcom;
    all.recdb = &recdb;
    all.adrconv = &adrconv;
    all.errbox = &errbox;
    all.hstytmp = &hstytmp;
    all.dialog = &dialog;
    EXPECT_EQ(tqSetSiblings(&all), 0);
  }

  tFLDCOM_API fldcom{};
  tRECDB_API recdb{};
  tADRCONV_API adrconv{};
  tERRBOX_API errbox{};
  tHSTYTMP_API hstytmp{};
  tDIALOG_API dialog{};
};

}  // namespace tq::test
