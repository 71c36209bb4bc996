"""Checks res/Lang.con, which translators edit by hand and which the program splits at every comma without quoting.

A mistake in it shows late (the program fails to start, or a menu in one language has a wrong mnemonic), so everything
that a translator can get wrong is checked here: the bytes of the file, the set of codes, the caption markup and the
mnemonics of every window in every language.

The texts, their English forms and the sets that are on the screen together are read from the program's tables: a caption
is written there as {1002, "&Alert"}, the code of any other text as a constant named k...Text.

Run: /usr/bin/python3 res/check_lang.py
"""

import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[1]
LANG_FILE = ROOT / "res" / "Lang.con"
LANGUAGES = ["English", "Fran\xe7ais", "Deutsch", "Espa\xf1ol"]
MAX_TEXTS = 201
MENU_TEXT_BYTES = 200  # the menu conversion reads an item's text into 201 bytes, the last of them NUL

_STRING = r'"((?:[^"\\]|\\.)*)"'
_CAPTION = re.compile(r"\{(\d{4,5}),\s*" + _STRING)
_TEXT_CODE = re.compile(r"\bint (k\w*Texts?\b[^;]*);")
_TABLE = re.compile(r"\b(MenuRow|ToolButton)\b[^;={]*?\b(k\w+)\b[^;={]*= \{(.*?)\n?\};", re.DOTALL)
_MENU_ROW = re.compile(r"\{(\d), [^{}]*?\{(\d{4,5}),\s*" + _STRING + r"\}([^}]*)\}")

# The windows whose buttons share one set of mnemonics with the menu bar and with each other: toolbars and menus by the
# names of their tables, single buttons by their sources.
WINDOWS = {
    "main window": ["kMainMenu", "kToolButtons"],
    "chat window": ["kChatMenu", "kChatButtons"],
    "composer": ["kComposerButtons"],
    "options, Interface": ["kPageButtons", "kCommandButtons", "ui/options/interface_page.cpp"],
    "options, Security": ["kPageButtons", "kCommandButtons", "kBlockButtons"],
    "options, Groups": ["kPageButtons", "kCommandButtons", "kGroupButtons"],
    "save window": ["ui/toolkit/save/frm_save.cpp"],
}


class Program:
    """The texts that the sources refer to."""

    def __init__(self):
        self.sources = {}
        for path in sorted(path for folder in ("core", "net", "ui") for path in (ROOT / folder).rglob("*.[ch]*")):
            self.sources[path.relative_to(ROOT).as_posix()] = path.read_text()
        whole = "\n".join(self.sources.values())
        self.captions = [(int(code), text) for code, text in _CAPTION.findall(whole)]  # code and built-in text
        self.messages = {int(code) for line in _TEXT_CODE.findall(whole) for code in re.findall(r"\b\d{4,5}\b", line)}
        self.menus, self.toolbars = {}, {}
        self.source_of = {name: path for path, source in self.sources.items() for _, name, _ in _TABLE.findall(source)}
        for kind, name, rows in _TABLE.findall(whole):
            if kind == "MenuRow":
                self.menus[name] = [(int(level), int(code), text, re.findall(r"\b\d{4,5}\b", rest), "res::" in rest)
                                    for level, code, text, rest in _MENU_ROW.findall(rows)]
            else:
                self.toolbars[name] = [int(code) for code, _ in _CAPTION.findall(rows)]
        self.helps = {int(code): int(helps[0]) for rows in self.menus.values() for _, code, _, helps, _ in rows if helps}

    def codes(self):
        return {code for code, _ in self.captions} | self.messages | set(self.helps.values())

    def siblings(self):
        """The codes of the items of each menu and sub-menu, which are on the screen together."""
        for name, rows in self.menus.items():
            path, groups = [], {}
            for number, (level, code, text, helps, _) in enumerate(rows):
                path[level:] = [number]
                if not text.startswith("-") and not helps:
                    groups.setdefault(tuple(path[:level]), []).append(code)
            for place, codes in groups.items():
                yield f"{name}, {place}", codes

    def together(self):
        """Everything that shares one set of mnemonics, as lists of codes."""
        yield from self.siblings()
        for window, parts in WINDOWS.items():
            codes = []
            for part in parts:
                if part in self.menus:
                    codes += [code for level, code, *_ in self.menus[part] if level == 0]
                elif part in self.toolbars:
                    codes += self.toolbars[part]
                else:
                    # A menu's text is a name for screen readers here.
                    codes += [int(code) for code, text in _CAPTION.findall(self.sources[part])
                              if "&" in text and not text.startswith("|")]
            yield window, codes


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
        cls.program = Program()
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
        self.assertEqual(codes, sorted(set(codes)), "each code once, ascending: texts requested in file order are found at once")
        self.assertEqual(set(codes) ^ self.program.codes(), set(), "in the file or in the program, but not in both")
        self.assertLessEqual(len(codes), MAX_TEXTS)
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
                self.assertNotRegex(text, "[^ -~]\\|", "the bar would be the trail byte of a double-byte character")
                self.assertLessEqual(len(text.encode("cp1252")), MENU_TEXT_BYTES)
        for code in range(10300, 10304):
            self.assertEqual(len(set(self.texts[code])), 1, f"{code}: asked in the language that is chosen")

    def test_english_is_built_in(self):
        for code, built_in in self.program.captions:
            english = self.texts[code][0]
            if code in self.program.helps:  # name and help text are texts of their own
                english = f"{built_in[0]}|{self.texts[self.program.helps[code]][0]}|{english}"
            self.assertEqual(english, built_in, code)

    def test_caption_markup_is_kept(self):
        shown_in_menus = {code for _, codes in self.program.siblings() for code in codes}
        with_mnemonic = shown_in_menus | {code for code, text in self.program.captions if "&" in text}
        for code, language, text in self.EachText():
            with self.subTest(code=code, language=language):
                self.assertEqual(Marks(text), Marks(self.texts[code][0]))
                self.assertNotEqual(Caption(text), "", "no caption after the second bar")
                if code not in with_mnemonic:
                    self.assertNotIn("&", text)
                elif language != "English":  # which is fixed as it stands, and lacks some
                    self.assertEqual(text.count("&"), 1, "exactly one mnemonic")
                    self.assertIn("&", Caption(text), "the mnemonic stands in the help text")
                    self.assertRegex(Mnemonic(text), "[a-z]", "a letter that every keyboard has")

    def test_mnemonics_differ(self):
        known = {part for parts in WINDOWS.values() for part in parts}
        unknown = {name for name in self.program.toolbars if not known & {name, self.program.source_of[name]}}
        self.assertEqual(unknown, set(), "tables of buttons that no window of WINDOWS has")
        for name, codes in self.program.together():
            self.assertGreater(len(codes), 0, f"{name} is found nowhere")
            for column, language in enumerate(LANGUAGES[1:], 1):
                letters = [Mnemonic(self.texts[code][column]) for code in set(codes)]
                self.assertEqual(len(letters), len(set(letters)), f"{language}, {name}: a letter twice in {letters}")

    def test_no_caption_begins_another(self):
        """A picture belongs to a caption by the caption's beginning."""
        for menu, rows in self.program.menus.items():
            for column, language in enumerate(LANGUAGES):
                shown = [(Caption(self.texts[code][column]).lower(), picture)
                         for _, code, text, _, picture in rows if not text.startswith("-")]
                captions = [caption for caption, picture in shown if picture]
                self.assertGreater(len(captions), 0, menu)
                for caption in captions:
                    same = [other for other, _ in shown if other.startswith(caption)]
                    self.assertEqual(same, [caption], f"{language}, {menu}: they would share a picture")


if __name__ == "__main__":
    unittest.main()
