"""Checks res/Lang.con, which translators edit by hand and which the program splits at every comma without quoting.

A mistake in it shows late (the reader stops the program at its start, or a wrong menu carries a wrong letter), so
everything a translator can get wrong is checked here: the bytes of the file, the set of codes, the caption language and the
mnemonics of every window in every language.

Run: /usr/bin/python3 -m unittest res/check_lang.py
"""

import pathlib
import unittest

LANG_FILE = pathlib.Path(__file__).resolve().parent / "Lang.con"
LANGUAGES = ["English", "Fran\xe7ais", "Deutsch", "Espa\xf1ol"]

# Every text the program asks for.
CODES = [
    *range(1001, 1005), *range(1101, 1126), *range(1201, 1209),
    *range(2001, 2023), *range(2101, 2117), *range(2201, 2207),
    *range(3001, 3004), *range(3101, 3117), *range(3201, 3203),
    *range(4001, 4006), 5001, *range(5101, 5110), 5201, *range(6001, 6007), 6201, *range(7001, 7007),
    *range(8202, 8210), 9201, 10201, *range(10300, 10304),
]
HIGHEST_LINES = 201
MENU_TEXT_BYTES = 200  # the menu conversion reads an item's text into 201 bytes, the last of them zero

# What is on screen together and therefore shares one alphabet: toolbar with menu bar, the items of one menu, the
# visible buttons of one page.
MNEMONIC_GROUPS = {
    "main window": [1101, 1112, 1121, 1002, 1003, 1004],
    "program menu": [1103, 1104, 1106, 1107, 1109, 1110, 1111],
    "view menu": [1114, 1116],
    "corner menu": [1117, 1118, 1119, 1120],
    "help menu": [1123, 1124],
    "link menu": [1202, 1203, 1204, 1205, 1206, 1207],
    "options, User and Interface": [2002, 2003, 2004, 2005, 2006, 2007, 2013, 2014],
    "options, Security": [2002, 2003, 2004, 2005, 2006, 2007, 2016, 2017],
    "options, Groups": [2002, 2003, 2004, 2005, 2006, 2007, 2019, 2020, 2021],
    "chat window": [3101, 3112, 3002],
    "chat view menu": [3103, 3104, 3106, 3107, 3108, 3109, 3111],
    "chat users menu": [3114, 3116],
    "composer": [4004, 4005],
    "popup menu": [5102, 5103, 5104, 5108, 5109],
    "reply menu": [5106, 5107],
    "save window": [6005, 6006],
}
WITH_MNEMONIC = {code for group in MNEMONIC_GROUPS.values() for code in group} | {3101, 3112, 7006}
# English captions are fixed as they stand: these have no letter, and these pairs share one.
ENGLISH_WITHOUT_MNEMONIC = {1114, 3103, 3104, 3106}
ENGLISH_SHARED = [{2006, 2016}, {2006, 2020}, {3107, 3111}, {5102, 5103}]

QUESTIONS = range(10300, 10304)  # one per language; every column holds the same text

# A picture belongs to a caption by the caption's beginning, so that within one menu bar no caption may begin another.
PICTURED_MENUS = {
    "main": [*range(1103, 1105), *range(1106, 1108), *range(1109, 1112), 1116, 1123, 1124],
    "chat": [3103, 3104, 3107, 3111, 3114, 3116],
    "popup": [5102, 5103, 5104, 5106, 5107, 5108, 5109],
}


def Caption(text):
    """The part of a menu text that is shown: what follows the second bar, or all of it when there is no help text."""
    return text.split("|", 2)[-1] if text.count("|") >= 2 else text


def Mnemonic(text):
    position = Caption(text).replace("&&", "").find("&")
    return None if position < 0 else Caption(text).replace("&&", "")[position + 1].lower()


def Marks(text):
    """What every language must have in common with English: the leading mark and the number of bars."""
    return (text[0] if text[0] in "-#*|" else "", text.count("|"))


class LanguageFile(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.data = LANG_FILE.read_bytes()
        cls.lines = cls.data.decode("cp1252").removesuffix("\r\n").split("\r\n")
        cls.fields = [line.split(",") for line in cls.lines]
        cls.texts = {int(row[0]): row[1:] for row in cls.fields[1:]}

    def EachText(self):
        for code, row in self.texts.items():
            for language, text in zip(LANGUAGES, row):
                yield code, language, text

    def test_bytes_and_lines(self):
        self.assertTrue(self.data.startswith(b"Code,English,Fran\xe7ais,Deutsch,Espa\xf1ol\r\n"))
        self.assertNotIn(b"\xef\xbb\xbf", self.data)
        self.assertEqual(self.data.count(b"\r"), self.data.count(b"\n"))
        self.assertEqual(self.data.count(b"\r\n"), len(self.lines), "every line ends in CR LF, the last one too")
        for number, line in enumerate(self.lines, 1):
            self.assertNotEqual(line, "", f"line {number}: the reader takes a blank line for a code")
            self.assertFalse(set(line) & {chr(byte) for byte in range(32)}, f"line {number}: control byte")

    def test_codes_and_fields(self):
        codes = [int(row[0]) for row in self.fields[1:]]
        self.assertEqual(codes, CODES, "each code once, in rising order: texts asked in file order are found at once")
        self.assertLessEqual(len(codes), HIGHEST_LINES)
        for row in self.fields[1:]:
            self.assertEqual(len(row), 1 + len(LANGUAGES), f"{row[0]}: a comma inside a text, or a language missing")
            self.assertEqual(row[0], row[0].strip())

    def test_texts_are_whole(self):
        for code, language, text in self.EachText():
            with self.subTest(code=code, language=language):
                self.assertNotEqual(text, "")
                self.assertEqual(text, text.strip(" "), "blank at an end")
                self.assertNotIn("  ", text)
                self.assertNotIn("\ufffd", text)
                self.assertLessEqual(len(text.encode("cp1252")), MENU_TEXT_BYTES)
        for code in QUESTIONS:
            self.assertEqual(len(set(self.texts[code])), 1, f"{code}: asked in the language that is chosen")

    def test_caption_language_is_kept(self):
        for code, language, text in self.EachText():
            with self.subTest(code=code, language=language):
                self.assertEqual(Marks(text), Marks(self.texts[code][0]))
                self.assertNotEqual(Caption(text), "", "no caption after the second bar")
                if language == "English" and code in ENGLISH_WITHOUT_MNEMONIC:
                    self.assertIsNone(Mnemonic(text))
                elif code in WITH_MNEMONIC:
                    self.assertEqual(text.count("&"), 1, "exactly one mnemonic")
                    self.assertIn("&", Caption(text), "the mnemonic stands in the help text")
                    self.assertRegex(Mnemonic(text), "[a-z]", "a letter that every keyboard has")
                else:
                    self.assertNotIn("&", text)

    def test_mnemonics_differ(self):
        for name, group in MNEMONIC_GROUPS.items():
            for column, language in enumerate(LANGUAGES):
                letters = {}
                for code in group:
                    letter = Mnemonic(self.texts[code][column])
                    other = letters.setdefault(letter, code) if letter else code
                    if language == "English" and {code, other} in ENGLISH_SHARED:
                        continue
                    self.assertEqual(other, code, f"{language}, {name}: letter {letter!r} twice")

    def test_no_caption_begins_another(self):
        for menu, codes in PICTURED_MENUS.items():
            for column, language in enumerate(LANGUAGES):
                captions = [Caption(self.texts[code][column]).lower() for code in codes]
                for caption in captions:
                    same = [other for other in captions if other.startswith(caption)]
                    self.assertEqual(same, [caption], f"{language}, {menu} menu: they would share a picture")


if __name__ == "__main__":
    unittest.main()
