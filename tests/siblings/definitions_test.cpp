// The built-in siblings' definition files: where they are found, and what is made of field files
// and field definitions of any content.
#include <cstring>

#include "siblings/siblings.h"
#include "support/definitions.h"
#include "support/test.h"
#include "tqutil/host.h"
#include "tqutil/records.h"

namespace {

std::string definition_folder() { return tq::sibling_folder(&tFLDCOM_API::FldComGetDefFolder); }

TEST(DefinitionFolder, SettingsThenHomeThenShipped) {
  DefinitionHome home;
  const std::string shipped = definition_folder();
  EXPECT_TRUE(shipped.ends_with("share\\tqutil\\definition\\")) << shipped;
  EXPECT_FALSE(home.exists("definition")) << "asking makes no folder";
  home.make_folder("definition");
  EXPECT_EQ(definition_folder(), shipped) << "a folder without the file does not count";
  home.write("definition\\synckey.dat", "");
  EXPECT_EQ(definition_folder(), home.at("definition\\"));
  home.write("tqutil.ini", "[folders]\ndefinition=mine\n");
  EXPECT_EQ(definition_folder(), home.at("mine\\")) << "a setting counts whatever is there";
  EXPECT_FALSE(home.exists("mine"));
  home.write("tqutil.ini", "[folders]\ndefinition=" + std::string(300, 'x') + "\n");
  EXPECT_EQ(definition_folder(), "");
}

struct Header {
  short number = -1, number2 = -1;
  char title[TQ_PATH_SIZE] = "?";
  char comment[256] = "?";
};

short classify(const std::string& path, Header& header) {
  const tFLDCOM_API& api = tq::fldcom();
  return api.FldComClassifyFile(api.context, path.c_str(), &header.number, header.title,
                                header.comment, &header.number2);
}

// The records as `field,place,heading;`.
std::string records(const std::string& path) {
  const tFLDCOM_API& api = tq::fldcom();
  void* file = api.FldComFldFileOpen(api.context, path.c_str(), "r");
  if (file == nullptr) return "none";
  std::string text;
  for (tFLDCOM_FLDREC record; api.FldComFldFileRead(api.context, file, &record) == 0;) {
    text += std::to_string(record.fldId) + ',' + std::to_string(record.dataId) + ',' +
            record.heading + ';';
  }
  api.FldComFldFileClose(api.context, file);
  return text;
}

TEST(FieldFile, HeadersAndRecords) {
  DefinitionHome home;
  const std::string head = "FLD:3,4\ntitle\ncomment\n";
  // `wanted`: records, "none": no field file
  const std::tuple<const char*, std::string, std::string> cases[] = {
      {"records", head + "1,0,Name\r\n242,17,E-mail\r\n", "1,0,Name;242,17,E-mail;"},
      {"comments everywhere", ";\n;x\n" + head + ";1,0,x\n5,1,y\n", "5,1,y;"},
      {"headings with commas, or none", head + "1,2,a,b\n3,4,\n", "1,2,a,b;3,4,;"},
      {"lines that are no records are passed over",
       head + "\n1\n1,2\nx,1,a\n1,x,a\n,,\n-1,2,a\n1,-2,a\n32768,1,a\n1,99999999999,a\n"
              "32767,32767,z\n",
       "32767,32767,z;"},
      {"no records", head, ""},
      {"no comment", "FLD:3,4\ntitle", ""},
      {"no title", "FLD:3,4\n\ncomment\n1,0,x\n", "none"},
      {"one number", "FLD:3\ntitle\ncomment\n", "none"},
      {"number out of range", "FLD:40000,1\ntitle\n", "none"},
      {"no mark", "3,4\ntitle\ncomment\n1,0,x\n", "none"},
      {"empty", "", "none"},
      {"binary", std::string("\0\xff\x81\0", 4), "none"},
  };
  for (const auto& [why, bytes, wanted] : cases) {
    SCOPED_TRACE(why);
    home.write("f.FLD", bytes);
    const std::string path = home.at("f.FLD");
    EXPECT_EQ(records(path), wanted);
    Header header;
    EXPECT_EQ(classify(path, header) != 0, wanted == "none");
    if (wanted == "none") {
      EXPECT_EQ(header.number, -1) << "outputs stay as they were";
      EXPECT_STREQ(header.title, "?");
      continue;
    }
    EXPECT_EQ(header.number, 3);
    EXPECT_EQ(header.number2, 4);
    EXPECT_STREQ(header.title, "title");
    EXPECT_STREQ(header.comment, bytes.size() < 16 ? "" : "comment");
  }
}

TEST(FieldFile, LongTextsAreCutAtACharacter) {
  DefinitionHome home;
  std::string text = "x";
  while (text.size() < 1000) text += "字"_sjis;
  home.write("f.FLD", "FLD:1,2\n" + text + "\n" + text + "\n1,2," + text + "\n");
  Header header;
  ASSERT_EQ(classify(home.at("f.FLD"), header), 0);
  EXPECT_EQ(header.title, text.substr(0, 261));
  EXPECT_EQ(header.comment, text.substr(0, 255));
  EXPECT_EQ(records(home.at("f.FLD")), "1,2," + text.substr(0, 255) + ";");
}

TEST(FieldFile, MembershipAndMissingFiles) {
  DefinitionHome home;
  home.write("f.FLD", "FLD:1,2\nt\nc\n0,0,a\n32767,1,b\n");
  home.make_folder("folder.FLD");
  const tFLDCOM_API& api = tq::fldcom();
  void* test = api.FldComFldDataInInit(api.context, home.at("f.FLD").c_str());
  ASSERT_NE(test, nullptr);
  for (const short fldId : {short{-32768}, short{-1}, short{0}, short{1}, short{32767}}) {
    EXPECT_EQ(api.FldComIsFldDataIn(api.context, 1, 1000, fldId, 1, test) != 0,
              fldId == 0 || fldId == 32767);
  }
  EXPECT_EQ(api.FldComIsFldDataIn(api.context, 1, 1000, 0, 1, nullptr), 0);
  api.FldComFldDataInEnd(api.context, test);
  for (const std::string& path : {home.at("missing.FLD"), home.at("folder.FLD"), std::string()}) {
    EXPECT_EQ(api.FldComFldDataInInit(api.context, path.c_str()), nullptr);
    EXPECT_EQ(records(path), "none");
    Header header;
    EXPECT_NE(classify(path, header), 0);
  }
  EXPECT_EQ(api.FldComFldFileOpen(api.context, home.at("f.FLD").c_str(), "w"), nullptr);
}

TEST(FieldDefinitions, LinesOfAnyContent) {
  DefinitionHome home;
  home.write("definition\\RECDB.DAT",
             "; comment\n5,1,0,1,住所録,氏名\n5,9,9,9,x,again\n7,10,1,0,t,\n"
             "40000,1,0,0,t,c\nx,1,0,0,t,c\n-3,1,0,0,t,c\n9\n9,1\n8,1,0,0,,no table\n\n"
             "32767,2,3,-4,last,a,b\n"_sjis);
  home.read_again();
  const tRECDB_API& api = tq::recdb();
  std::string all;
  for (int32_t index = 0; index < api.RecDbGetMstFldInfoCnt(api.context); ++index) {
    short fldId = -1;
    char table[66], caption[66];
    tRECDB_FLDINFO known{};
    EXPECT_EQ(api.RecDbGetFldIdPair(api.context, index, &fldId, table), 0);
    EXPECT_EQ(api.RecDbGetFldIdPair2(api.context, fldId, caption, nullptr), 0);
    EXPECT_EQ(api.RecDbGetFldInfo(api.context, fldId, &known), 0);
    for (const short number :
         {fldId, known.kind, known.hidden, api.RecDbIsFldSync2Tbl(api.context, fldId)}) {
      all += std::to_string(number) + ",";
    }
    all += std::string(table) + "," + caption + ";";
  }
  EXPECT_EQ(all, "5,1,0,1,住所録,氏名;7,10,1,0,t,;32767,2,3,-4,last,a,b;"_sjis);
  tRECDB_FLDINFO info{1, 1, 1, "?", "?"};
  EXPECT_NE(api.RecDbGetFldInfo(api.context, 6, &info), 0);
  EXPECT_EQ(info.fldId, 0);
  char table[66] = "?";
  EXPECT_NE(api.RecDbGetFldIdPair2(api.context, -1, nullptr, table), 0);
  EXPECT_STREQ(table, "");
  EXPECT_NE(api.RecDbGetFldIdPair(api.context, 3, nullptr, nullptr), 0);
  EXPECT_NE(api.RecDbGetFldIdPair(api.context, -1, nullptr, nullptr), 0);
}

TEST(FieldDefinitions, KeptUntilForgottenAndSoughtWhileMissing) {
  DefinitionHome home;
  home.write("tqutil.ini", "[folders]\ndefinition=mine\n");
  home.read_again();
  const tRECDB_API& api = tq::recdb();
  EXPECT_EQ(api.RecDbGetMstFldInfoCnt(api.context), 0);
  home.write("mine\\RECDB.DAT", "5,1,0,1,t,c\n");
  EXPECT_EQ(api.RecDbGetMstFldInfoCnt(api.context), 1);
  home.write("mine\\RECDB.DAT", "5,1,0,1,t,c\n6,1,0,1,t,c\n");
  EXPECT_EQ(api.RecDbGetMstFldInfoCnt(api.context), 1);
  home.read_again();
  EXPECT_EQ(api.RecDbGetMstFldInfoCnt(api.context), 2);
}

}  // namespace
