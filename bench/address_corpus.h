// Address-book text made up for the benches: the same text for the same seed, in Shift-JIS.
//
// Every line is one entry with the fields of an address book separated by tabs: name, reading,
// postal code, address, building, telephone, mail address, birthday and a note. As in entries typed
// by many hands over the years, the width of digits, letters and katakana changes from field to
// field, kanji numerals stand beside digits, and the spaces are of both widths.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>

#include "base/sjis_literal.h"

namespace tq::bench {

class AddressCorpus {
 public:
  explicit AddressCorpus(std::uint64_t seed) : state_(seed) {}

  // One entry, without a line end.
  std::string entry() {
    std::string line;
    for (const auto& field : {name(), reading(), postal_code(), address(), building(), telephone(),
                              mail(), date(), note()}) {
      if (!line.empty()) line += '\t';
      line += field;
    }
    return line;
  }

  std::string name() {
    return any({"山田"_sjis, "佐々木"_sjis, "小野寺"_sjis, "長谷川"_sjis, "渡邊"_sjis, "森"_sjis,
                "五十嵐"_sjis, "表"_sjis, "髙橋"_sjis, "一ノ瀬"_sjis}) +
           any({"　"_sjis, " ", "　"_sjis, ""}) +
           any({"太郎"_sjis, "さくら"_sjis, "花子"_sjis, "ソフィア"_sjis, "健一"_sjis, "千代"_sjis,
                "みどり"_sjis, "三四郎"_sjis});
  }

  std::string reading() {
    return any({"ヤマダ　タロウ"_sjis, "ﾔﾏﾀﾞ ﾀﾛｳ"_sjis, "ササキ　サクラ"_sjis, "ﾊｾｶﾞﾜ ﾊﾅｺ"_sjis,
                "ワタナベ　ケンイチ"_sjis, "ｵﾉﾃﾞﾗ ﾐﾄﾞﾘ"_sjis, "イガラシ　チヨ"_sjis,
                "たかはし　そふぃあ"_sjis});
  }

  std::string postal_code() { return any({"〒"_sjis, ""}) + number(3) + "-" + number(4); }

  std::string address() {
    return any({"東京都千代田区一ツ橋"_sjis, "北海道札幌市中央区北五条西"_sjis,
                "大阪府大阪市北区梅田"_sjis, "京都府京都市上京区今出川通烏丸東入"_sjis,
                "神奈川県横浜市西区みなとみらい"_sjis, "埼玉県さいたま市大宮区桜木町"_sjis,
                "三重県四日市市八王子町"_sjis, "千葉県千葉市美浜区中瀬"_sjis}) +
           block();
  }

  std::string building() {
    return any({"", "", "サンライズビル"_sjis, "ｺｰﾎﾟ緑"_sjis, "グリーンハイツ　"_sjis,
                "Ｋ＆Ｔビル"_sjis, "メゾン・ド・桜 "_sjis, "ﾊﾟｰｸﾀﾜｰ"_sjis}) +
           any({"", "三十五階"_sjis, "１０１号室"_sjis, "203", "B棟５Ｆ"_sjis});
  }

  std::string telephone() {
    return any({"03-"_sjis, "０３－"_sjis, "045-"_sjis, "(06)"_sjis, "０９０－"_sjis,
                "090-"_sjis}) +
           number(4) + any({"-"_sjis, "－"_sjis, "-"_sjis}) + number(4);
  }

  std::string mail() {
    return any({"taro.yamada", "hanako", "info", "k-watanabe", "s_sasaki"}) + number_half(2) +
           any({"@example.co.jp", "@mail.example.ne.jp", "＠ｅｘａｍｐｌｅ．ｊｐ"_sjis});
  }

  std::string date() {
    const std::string month = number_half_below(12);
    const std::string day = number_half_below(28);
    const std::string year = number_half_below(60);
    switch (below(6)) {
      case 0:
        return "昭和"_sjis + year + "年"_sjis + month + "月"_sjis + day + "日"_sjis;
      case 1:
        return "19" + number_half(2) + "/" + month + "/" + day;
      case 2:
        return "Ｈ"_sjis + number(2) + "．"_sjis + number(1) + "．"_sjis + number(1);
      case 3:
        return "s" + year + "." + month + "." + day;
      case 4:
        return "1975" + std::string("0") + number_half(1) + "1" + number_half(1);
      default:
        return "平成"_sjis + number(2) + "年"_sjis + number(1) + "月"_sjis + number(2) + "日"_sjis;
    }
  }

  std::string note() {
    return any({"", "", "", "年賀状は不要とのこと。"_sjis, "大学の同級生（テニス部）"_sjis,
                "取引先　営業２課"_sjis, "ﾌｧｯｸｽは自宅のみ"_sjis, "Taro's wife; 2 children"});
  }

  // Entries, each with its line end, until the text has at least `size` bytes.
  static std::string text(std::size_t size, std::uint64_t seed = 1) {
    AddressCorpus corpus(seed);
    std::string out;
    out.reserve(size + 1024);
    while (out.size() < size) (out += corpus.entry()) += "\r\n";
    return out;
  }

 private:
  std::size_t below(std::size_t limit) {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    return static_cast<std::size_t>((state_ >> 33) % limit);
  }

  std::string any(std::initializer_list<const char*> words) {
    return words.begin()[below(words.size())];
  }

  std::string number_half(std::size_t digits) {
    std::string out;
    while (out.size() < digits) out += static_cast<char>('0' + below(10));
    return out;
  }

  std::string number_half_below(std::size_t limit) { return std::to_string(1 + below(limit)); }

  // Digits of either width.
  std::string number(std::size_t digits) {
    const std::string half = number_half(digits);
    if (below(2) == 0) return half;
    std::string full;
    for (const char digit : half) (full += '\x82') += static_cast<char>(digit - '0' + 0x4F);
    return full;
  }

  std::string kanji_number() {
    return any({"一"_sjis, "二"_sjis, "三"_sjis, "十"_sjis, "二十三"_sjis, "百二十"_sjis,
                "一〇五"_sjis, "十七"_sjis});
  }

  std::string block() {
    switch (below(4)) {
      case 0:
        return kanji_number() + "丁目"_sjis + kanji_number() + "番"_sjis + kanji_number() +
               "号"_sjis;
      case 1:
        return number(1) + "-" + number(2) + "-" + number(1);
      case 2:
        return number(1) + "丁目"_sjis + number(2) + "番地"_sjis + number(2);
      default:
        return number(1) + "－"_sjis + number(2) + "－"_sjis + number(3);
    }
  }

  std::uint64_t state_;
};

}  // namespace tq::bench
