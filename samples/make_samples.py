#!/usr/bin/env python3
"""Writes the sample address files beside this script: one master and two partners.

  make_samples.py [FOLDER]

All of it is invented and the same at every run. Nobody can be reached: mail addresses lie in the
domains that are reserved for examples, and in the telephone numbers the part behind the area code
begins with 0, which no exchange in Japan does.

  master.csv  the address book: Shift-JIS, CR LF, Japanese headings, spellings as in the family
              register
  keitai.csv  a telephone's export: UTF-8 with byte order mark, readings in half-width kana, numbers
              without hyphens, common kanji
  mailer.csv  a mail program's export: UTF-8, English headings, every cell quoted
"""

import random
import sys
from dataclasses import dataclass, field, replace
from pathlib import Path

# Kanji as in the register, as others write it, kana, Latin letters.
FAMILY_NAMES = [name.split("/") for name in """
佐藤/佐藤/サトウ/sato 鈴木/鈴木/スズキ/suzuki 髙橋/高橋/タカハシ/takahashi 田中/田中/タナカ/tanaka
渡邊/渡辺/ワタナベ/watanabe 渡邉/渡辺/ワタナベ/watanabe 伊藤/伊藤/イトウ/ito 山本/山本/ヤマモト/yamamoto
中村/中村/ナカムラ/nakamura 小林/小林/コバヤシ/kobayashi 加藤/加藤/カトウ/kato 吉田/𠮷田/ヨシダ/yoshida
山田/山田/ヤマダ/yamada 佐々木/佐々木/ササキ/sasaki 山口/山口/ヤマグチ/yamaguchi 松本/松本/マツモト/matsumoto
井上/井上/イノウエ/inoue 木村/木村/キムラ/kimura 林/林/ハヤシ/hayashi 齋藤/斎藤/サイトウ/saito
齊藤/斉藤/サイトウ/saito 清水/清水/シミズ/shimizu 山﨑/山崎/ヤマザキ/yamazaki 森/森/モリ/mori
池田/池田/イケダ/ikeda 橋本/橋本/ハシモト/hashimoto 阿部/阿部/アベ/abe 石川/石川/イシカワ/ishikawa
中嶋/中島/ナカジマ/nakajima 小川/小川/オガワ/ogawa 前田/前田/マエダ/maeda 長谷川/長谷川/ハセガワ/hasegawa
藤田/藤田/フジタ/fujita 後藤/後藤/ゴトウ/goto 村上/村上/ムラカミ/murakami 遠藤/遠藤/エンドウ/endo
坂本/坂本/サカモト/sakamoto 櫻井/桜井/サクライ/sakurai 廣瀬/広瀬/ヒロセ/hirose 澤田/沢田/サワダ/sawada
濱田/浜田/ハマダ/hamada 國井/国井/クニイ/kunii 宮﨑/宮崎/ミヤザキ/miyazaki 冨田/富田/トミタ/tomita
瀧澤/滝沢/タキザワ/takizawa 嶋田/島田/シマダ/shimada 大塚/大塚/オオツカ/otsuka 服部/服部/ハットリ/hattori
""".split()]
GIVEN_NAMES = [name.split("/") for name in """
太郎/太郎/タロウ/taro 一郎/一郎/イチロウ/ichiro 健一/健一/ケンイチ/kenichi 大輔/大輔/ダイスケ/daisuke
翔太/翔太/ショウタ/shota 直樹/直樹/ナオキ/naoki 和也/和也/カズヤ/kazuya 誠/誠/マコト/makoto
浩二/浩二/コウジ/koji 惠子/恵子/ケイコ/keiko 美咲/美咲/ミサキ/misaki 陽子/陽子/ヨウコ/yoko
花子/花子/ハナコ/hanako 由美子/由美子/ユミコ/yumiko 直美/直美/ナオミ/naomi 裕子/裕子/ユウコ/yuko
眞理/真理/マリ/mari 櫻/桜/サクラ/sakura さくら/さくら/サクラ/sakura 榮一/栄一/エイイチ/eiichi
實/実/ミノル/minoru 靜香/静香/シズカ/shizuka 健太郎/健太郎/ケンタロウ/kentaro 美穂/美穂/ミホ/miho
彩/彩/アヤ/aya 翼/翼/ツバサ/tsubasa 葵/葵/アオイ/aoi 結衣/結衣/ユイ/yui 悠斗/悠斗/ユウト/yuto
拓也/拓也/タクヤ/takuya 優子/優子/ユウコ/yuko 香織/香織/カオリ/kaori 千尋/千尋/チヒロ/chihiro
純一/純一/ジュンイチ/junichi ひとみ/ひとみ/ヒトミ/hitomi 貴之/貴之/タカユキ/takayuki
""".split()]
# Prefecture and town, area code, local exchange of a number that does not exist.
PLACES = [place.split("/") for place in """
東京都千代田区緑町/03/0{:03} 東京都世田谷区本町/03/0{:03} 大阪府大阪市北区中央/06/0{:03}
神奈川県横浜市中区港町/045/0{:02} 愛知県名古屋市中区栄町/052/0{:02} 京都府京都市左京区東町/075/0{:02}
北海道札幌市中央区南町/011/0{:02} 福岡県福岡市中央区西町/092/0{:02} 宮城県仙台市青葉区北町/022/0{:02}
""".split()]
COMPANIES = ["株式会社見本商事", "有限会社サンプル工房", "㈱例示システム", "見本市役所", "例文出版株式会社"]
NUMERALS = "一二三四五六七八九"

FULL_KANA = "。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワン"
HALF_KANA = dict(zip(FULL_KANA, map(chr, range(0xFF61, 0xFF9E))))
HALF_KANA |= {chr(ord(kana) + 1): HALF_KANA[kana] + "ﾞ" for kana in "カキクケコサシスセソタチツテトハヒフヘホ"}
HALF_KANA |= {chr(ord(kana) + 2): HALF_KANA[kana] + "ﾟ" for kana in "ハヒフヘホ"}


class Dice(random.Random):
    """Draws by random() alone, whose numbers are the same in every release of Python."""

    def below(self, count):
        return int(self.random() * count)

    def one_of(self, things):
        return things[self.below(len(things))]

    def chance(self, percent):
        return self.below(100) < percent


@dataclass
class Person:
    family: list
    given: list
    mail: str
    mobile: str
    home: str
    postal: str
    town: str
    block: tuple
    company: str = ""
    notes: str = ""
    kana_name: bool = field(default=False)  # the partner only knows how the name is read

    def register_name(self, between):
        return self.family[0] + between + self.given[0]

    def common_name(self, between):
        return self.family[1] + between + self.given[1]


def half_width(text):
    return "".join(HALF_KANA.get(kana, kana) for kana in text)


def full_width(text):
    return "".join(chr(ord(c) + 0xFEE0) if "!" <= c <= "~" else c for c in text)


def hiragana(katakana):
    return "".join(chr(ord(kana) - 0x60) if "ァ" <= kana <= "ヶ" else kana for kana in katakana)


def make_person(dice, taken):
    while True:
        family, given = dice.one_of(FAMILY_NAMES), dice.one_of(GIVEN_NAMES)
        if (family[3], given[3]) not in taken:
            break
    taken.add((family[3], given[3]))
    town, area, exchange = dice.one_of(PLACES)
    local = exchange.format(dice.below(1000 if "03" in exchange else 100))
    mail = f"{given[3]}.{family[3]}@{dice.one_of(['example.jp', 'example.com', 'mail.example.jp'])}"
    return Person(
        family, given, mail,
        mobile=f"090-0{dice.below(1000):03}-{dice.below(10000):04}",
        home=f"{area}-{local}-{dice.below(10000):04}",
        postal=f"{100 + dice.below(800)}-00{dice.below(100):02}",
        town=town,
        block=(1 + dice.below(9), 1 + dice.below(9), 1 + dice.below(9)),
        company=dice.one_of(COMPANIES) if dice.chance(30) else "")


def make_people(dice, count):
    """Some live together and share a telephone; of those some share the family name too."""
    people, taken = [], set()
    while len(people) < count:
        person = make_person(dice, taken)
        if people and dice.chance(12):
            partner = people[-1]
            person = replace(person, home=partner.home, postal=partner.postal, town=partner.town,
                             block=partner.block)
            if (partner.family[3], person.given[3]) not in taken:
                taken.add((partner.family[3], person.given[3]))
                person.family = partner.family
                person.mail = f"{person.given[3]}.{person.family[3]}@example.jp"
        people.append(person)
    return people


# --- How the three programs write a person ---

def master_row(dice, person):
    chome, ban, go = person.block
    address = dice.one_of([f"{person.town}{NUMERALS[chome - 1]}丁目{ban}番{go}号",
                           f"{person.town}{chome}-{ban}-{go}",
                           full_width(f"{person.town}{chome}-{ban}-{go}")])
    home = full_width(person.home) if dice.chance(10) else person.home
    return [person.register_name("　"), hiragana(person.family[2] + "　" + person.given[2]),
            person.postal, address, home, person.mobile, person.mail, person.company, person.notes]


def keitai_row(dice, person):
    name = person.common_name(dice.one_of([" ", "", "　"]))
    reading = half_width(person.family[2] + " " + person.given[2])
    if person.kana_name:
        name, reading = reading, ""
    mobile = person.mobile.replace("-", "")
    if dice.chance(15):
        mobile = "+81" + mobile[1:]
    home = person.home.replace("-", "") if dice.chance(60) else ""
    return [name, reading, mobile, home, person.mail if dice.chance(40) else ""]


def mailer_row(dice, person):
    mail = person.mail
    if dice.chance(15):
        mail = mail.split("@")[0].title() + "@" + mail.split("@")[1].upper()
    mobile = "(090) " + person.mobile[4:] if dice.chance(50) else ""
    if person.kana_name:  # a correspondent from abroad writes names in Latin letters
        return [person.given[3].title(), person.family[3].title(), "", mail, mobile, "", "", ""]
    return [person.given[1], person.family[1], person.common_name(" "), mail, mobile,
            person.home if dice.chance(25) else "", person.company, person.notes]


MASTER = ["氏名", "ふりがな", "郵便番号", "住所", "自宅電話", "携帯電話", "メールアドレス", "会社名", "メモ"]
KEITAI = ["名前", "フリガナ", "電話番号1", "電話番号2", "メール"]
MAILER = ["First Name", "Last Name", "Display Name", "E-mail Address", "Mobile Phone",
          "Business Phone", "Company", "Notes"]


def changed(dice, person):
    """What happens to an address in the years until the other side hears of it."""
    kind = dice.below(100)
    if kind < 8:
        return replace(person, mobile=f"090-0{dice.below(1000):03}-{dice.below(10000):04}")
    if kind < 16:
        return replace(person, mail=person.given[3] + str(dice.below(100)) + "@example.com")
    if kind < 19:  # everything but the name
        return replace(person, mail=f"new{dice.below(1000)}@example.jp", home="",
                       mobile=f"090-0{dice.below(1000):03}-{dice.below(10000):04}")
    if kind < 22:  # married: another family name
        return replace(person, family=dice.one_of(FAMILY_NAMES), home="")
    if kind < 26:
        return replace(person, kana_name=True)
    return person


def repeat_some(dice, rows, count, change):
    """Puts copies of rows further down, changed a little or not at all."""
    for _ in range(count):
        source = dice.below(len(rows))
        rows.insert(source + 1 + dice.below(len(rows) - source), change(list(rows[source])))


def spaced_out(row):
    row[0] = row[0].replace("　", "")
    row[-1] = "二重登録?"
    return row


def make_files():
    dice = Dice(20010401)
    people = make_people(dice, 270)
    people[3].notes = '同窓会の幹事, 通称"のりさん"'
    people[8].notes = "年賀状は控える\r\n(喪中)"
    people[11].notes = "犬の名前はポチ、猫の名前はタマ"

    known, keitai_only, both, mailer_only = people[:196], people[196:216], people[216:232], people[232:]
    master = [master_row(dice, person) for person in known]
    master.append(["", "", "100-0001", "東京都千代田区緑町1-1-1", "03-0000-0001", "",
                   "info@example.jp", COMPANIES[0], "代表"])
    repeat_some(dice, master, 4, spaced_out)

    keitai = [keitai_row(dice, changed(dice, person)) for person in known if dice.chance(78)]
    keitai += [keitai_row(dice, person) for person in keitai_only + both]
    repeat_some(dice, keitai, 3, lambda row: row)

    mailer = [mailer_row(dice, changed(dice, person)) for person in known if dice.chance(72)]
    mailer += [mailer_row(dice, person) for person in both + mailer_only]
    mailer.append(["", "", "", "Info@Example.JP", "", "03-0000-0001", COMPANIES[0], "main desk"])
    repeat_some(dice, mailer, 2, lambda row: row)
    return master, keitai, mailer


# --- Files ---

def csv_text(rows, line_end, always_quote):
    def cell(text):
        if always_quote or any(c in text for c in ',"\r\n'):
            return '"' + text.replace('"', '""') + '"'
        return text
    return "".join(",".join(map(cell, row)) + line_end for row in rows)


def main():
    folder = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).resolve().parent
    master, keitai, mailer = make_files()
    files = {"master.csv": csv_text([MASTER] + master, "\r\n", False).encode("cp932"),
             "keitai.csv": csv_text([KEITAI] + keitai, "\n", False).encode("utf-8-sig"),
             "mailer.csv": csv_text([MAILER] + mailer, "\n", True).encode("utf-8")}
    for name, content in files.items():
        (folder / name).write_bytes(content)


if __name__ == "__main__":
    main()
