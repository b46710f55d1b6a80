#include "engine/kanji.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace tqsync {
namespace {

// The common spelling first, then the others: old forms (旧字体) and the popular variants found in
// family registers. \uF9xx and \uFAxx are the compatibility characters of Shift-JIS machines
// (\uFA11 is the one in 山﨑); as escapes they survive editors that normalise text. Kanji that are
// only alike or that make another name (坂/阪, 畑/畠) stay apart.
constexpr std::u32string_view kSpellings[] = {
    U"高髙",     U"塚\uFA10", U"崎\uFA11嵜碕", U"辺邊邉",     U"斉齊斎齋", U"沢澤",     U"浜濱濵",
    U"広廣",     U"島嶋嶌",   U"桜櫻",         U"国國",       U"真眞",     U"恵惠",     U"徳德",
    U"栄榮",     U"円圓",     U"静靜",         U"寿壽",       U"富冨",     U"蔵藏",     U"滝瀧",
    U"竜龍",     U"条條",     U"実實",         U"会會",       U"来來",     U"関關",     U"学學",
    U"塩鹽",     U"吉𠮷",     U"万萬",         U"礼禮\uFA18", U"増增",     U"弥彌",     U"仏佛",
    U"豊豐",     U"淵渕渊",   U"峰峯",         U"館舘\uFA2C", U"曽曾",     U"園薗",     U"桧檜",
    U"瀬瀨",     U"鴎鷗",     U"聡聰",         U"顕顯",       U"清淸",     U"隆\uF9DC", U"朗\uF929",
    U"郎郞",     U"神\uFA19", U"祥\uFA1A",     U"福\uFA1B",   U"靖\uFA1C", U"精\uFA1D", U"都\uFA26",
    U"諸\uFA22", U"羽\uFA1E", U"逸\uFA25",     U"飯\uFA2A",   U"飼\uFA2B", U"鶴\uFA2D", U"晴\uFA12",
    U"益\uFA17", U"猪\uFA16", U"灯燈",         U"桑桒",       U"梅楳",     U"松枩",     U"船舩",
    U"野埜",     U"橋𣘺",     U"柳栁",         U"柏栢",       U"芦蘆",     U"鉄鐵",     U"宝寶",
    U"亀龜",     U"伝傳",     U"黒黑",         U"尭堯",       U"遥遙",     U"槙槇",     U"穂穗",
    U"暁曉",     U"凛凜",     U"総總",         U"芸藝",       U"荘莊",     U"応應",     U"児兒",
    U"戸戶",     U"内內",     U"黄黃",         U"巌巖",       U"巣巢",     U"厳嚴",     U"為爲",
    U"県縣",     U"蛍螢",     U"覚覺",         U"誉譽",       U"読讀",     U"郷鄕鄉",   U"霊靈",
    U"頼賴",     U"駅驛",     U"麦麥",
};

struct Spelling {
  char32_t code, common;
};

constexpr std::size_t kOtherSpellings = [] {
  std::size_t count = 0;
  for (const auto kanji : kSpellings) count += kanji.size() - 1;
  return count;
}();

// The other spellings by code point, for looking them up.
constexpr auto kByCode = [] {
  std::array<Spelling, kOtherSpellings> all{};
  std::size_t used = 0;
  for (const auto kanji : kSpellings) {
    for (const char32_t code : kanji.substr(1)) all[used++] = {code, kanji.front()};
  }
  std::ranges::sort(all, {}, &Spelling::code);
  return all;
}();
static_assert(std::ranges::adjacent_find(kByCode, {}, &Spelling::code) == kByCode.end(),
              "a kanji stands in two rows");

}  // namespace

char32_t common_kanji(char32_t code) {
  const auto* found = std::ranges::lower_bound(kByCode, code, {}, &Spelling::code);
  return found != kByCode.end() && found->code == code ? found->common : code;
}

}  // namespace tqsync
