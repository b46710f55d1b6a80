// Old and new spellings of kanji that stand for each other in names: 髙 is 高, 﨑 is 崎, 邊 and 邉
// are 辺.
#pragma once

namespace tqsync {

// The common spelling of a character; the character itself when it has no other.
char32_t common_kanji(char32_t code);

}  // namespace tqsync
