"""The ids of commands and controls, read from the program's sources: a new menu command changes those of later ones."""

import pathlib
import re
import types

_UI = pathlib.Path(__file__).resolve().parent.parent / "ui"
_SYSTEM = {"IDOK": 1, "IDCANCEL": 2}


def _of(*sources):
    """The enumerators of the sources by name; values are implicit, numbers or the ids of dialog buttons."""
    values = {}
    for source in sources:
        code = re.sub("//.*", "", (_UI / source).read_text("latin-1"))
        for enumerators in re.findall(r"\benum \w+ : \w+ \{(.*?)\};", code, re.DOTALL):
            value = -1
            for name, given in re.findall(r"(\w+)(?: = (\w+))?", enumerators):
                value = _SYSTEM.get(given) or int(given or value + 1)
                values[name] = value
    return types.SimpleNamespace(**values)


MAIN = _of("main/main_menu.h")
CHAT = _of("conversation/chat_menu.h")
COMPOSER = _of("conversation/frm_com.cpp")
POPUP = _of("conversation/frm_pop.cpp")
SAVE = _of("toolkit/save/frm_save.cpp")
OPTIONS = _of("options/frm_opt.h", "options/user_page.h", "options/interface_page.h", "options/security_page.h")
