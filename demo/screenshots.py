"""Takes screenshots of every window for the user's guide, from the program on a private segment. See
script/screenshots.

usage: screenshots.py [FOLDER [LANGUAGE [DPI]]]
"""

import pathlib
import re
import subprocess
import sys
import time

_ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(_ROOT))

from rig import copies, ids, network, private_machine, probe, screen  # noqa: E402

_PARTNER = f"{_ROOT}/build/native/demo/partner"
_PARTNERS = (("Berta", 0x208020, 0), ("Carl", 0xC04000, 0), ("Dora", 0x800080, 1))  # names, colours, states


def _start_partner(name, colour, state, *arguments):
    command = network.Host().command(_PARTNER, "--name", name, "--colour", str(colour), "--state", str(state), *arguments)
    return subprocess.Popen(command, stdout=subprocess.DEVNULL)


class Camera:
    """Takes screenshots of single windows, with the window manager's frame."""

    def __init__(self, on_screen, folder):
        self._screen = on_screen
        self._folder = folder

    def take(self, name, title, beside=0):
        """Takes a screenshot of the window with this caption, and of `beside` pixels to its right."""
        time.sleep(0.6)  # until everything is drawn
        left, top, right, bottom = self._area(title)
        right += beside
        self.take_area(name, left, top, right - left, bottom - top)

    def take_area(self, name, left, top, width, height):
        path = f"{self._folder}/{name}.png"
        self._screen.save(path)
        subprocess.run(["convert", path, "-crop", f"{width}x{height}+{max(left, 0)}+{max(top, 0)}", "+repage", "-strip",
                        "+dither", "-colors", "96", "PNG8:" + path], check=True)

    def _area(self, title):
        window = self._window(title)
        geometry = self._query("xwininfo", window)
        left, top, width, height = (int(re.search(rf"{what}: +(-?\d+)", geometry)[1]) for what in
                                    ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))
        frame = re.findall(r"\d+", self._query("xprop", window, "_NET_FRAME_EXTENTS").partition("=")[2]) or ["0"] * 4
        beside, _, above, below = map(int, frame)
        return left - beside, top - above, left + width + beside, top + height + below

    def _window(self, title):
        return self._screen.xdotool("search", "--onlyvisible", "--name", f"^{re.escape(title)}$").split()[-1]

    def _query(self, program, window, *properties):
        command = [program, "-display", self._screen.name, "-id", window, *properties]
        return subprocess.run(command, text=True, stdout=subprocess.PIPE, check=True).stdout

    def resize(self, title, width, height):
        self._screen.xdotool("windowsize", "--sync", self._window(title), str(width), str(height))

    def move(self, title, left, top):
        self._screen.xdotool("windowmove", self._window(title), str(left), str(top))


class Scene:
    """Anna's copy with some partners; every method takes one or a few screenshots."""

    def __init__(self, folder, language, dpi):
        self._dpi = dpi
        self.rig = copies.Rig()
        self.screen = self.rig.screen
        self.camera = Camera(self.screen, folder)
        self.anna = copies.Copy(self.rig.system, "anna", network.Host(), self.screen, dpi=dpi)
        self.anna.write_settings("Anna", colour=0x800000, sound="chime.wav", groups=["Workshop|Berta|Carl|"])
        self.anna.write("User.ini", self.anna.read("User.ini").replace("English", language))
        self.probe = self.anna.probe

    def play(self):
        self.name_conflict()
        self.splash()
        self.options()
        self.main_window()
        self.composer()
        self.popup()
        self.chat()
        self.at_work()
        self.save_dialog()
        self.about()

    def _px(self, pixels):
        return pixels * self._dpi // 96

    def name_conflict(self):
        other = _start_partner("Anna", 0, 0)
        self.anna.start()
        box, _ = self.anna.wait_for_box()
        self.camera.take("name-taken", box.text)
        self.probe.answer(box)
        other.terminate()
        other.wait()
        self.probe.close(self.probe.wait_for("frmOpt"))
        self.anna.process.wait(probe.TIMEOUT)

    def splash(self):
        for partner in _PARTNERS:
            _start_partner(*partner, "--chat")
        start = self.rig.wire.mark()
        self.anna.start()
        time.sleep(3)
        splash = self.probe.wait_for("frmSplash")
        self.camera.take_area("splash", splash.left, splash.top, splash.width, splash.height)
        probe.wait(lambda: any(text.startswith("Anna|M/Anna ") for text in self.rig.wire.texts(start=start)))
        self.camera.take_area("tray", 1024 - 200, 768 - 24, 200, 24)

    def options(self):
        self.anna.show_main()
        dialog = self.anna.open_options()
        for page, name in enumerate(("user", "interface", "security", "groups")):
            self.probe.command(dialog, ids.OPTIONS.kUserButton + page)
            if name == "security":
                for blocked in ("Mallory", "Trudy"):
                    self.probe.set_text(self.probe.control(dialog, ids.OPTIONS.kBlockBox), blocked)
                    page = self.probe.children(dialog, "picOpt")[2]
                    self.probe.send(page, probe.WM_COMMAND, ids.OPTIONS.kBlockEnter)
            self.camera.take("options-" + name, dialog.text)
        self.probe.command(dialog, ids.OPTIONS.kAcceptButton)
        self.probe.wait_gone(dialog)

    def main_window(self):
        names = {name for name, _, _ in _PARTNERS} | {"(Workshop)"}
        probe.wait(lambda: names <= self.anna.names())
        main = self.probe.wait_for("frmMain")
        self.camera.take("main", main.text)
        self.screen.keys("alt+q")
        self.camera.take("main-menu", main.text, beside=self._px(10))
        self.screen.keys("Escape", "Escape")

    def composer(self):
        composer = self.anna.open_composer("Berta")
        self.anna.type(composer, "Shall we have lunch at noon?")
        self.camera.take("composer", composer.text)
        self.probe.click_tool(composer, ids.COMPOSER.tbSend)
        self.probe.wait_gone(composer)

    def popup(self):
        popup, _ = self.anna.popup_at_rest()
        self.camera.take_area("popup", popup.left, popup.top, popup.width, popup.height)
        drop = next(child for child in self.probe.children(popup) if child.id == ids.POPUP.kDropId)
        self.screen.xdotool("mousemove", str((drop.left + drop.right) // 2), str((drop.top + drop.bottom) // 2), "click", "1")
        time.sleep(0.5)
        self.screen.keys("Down", "Down", "Down", "Right")
        self.camera.take_area("popup-menu", popup.left - self._px(150), popup.top - self._px(130), 1024, popup.height + self._px(130))
        self.screen.keys("Escape", "Escape", "Escape")
        self.probe.close(popup)

    def chat(self):
        chat = self.anna.open_chat("(All)")
        self.camera.resize(chat.text, self._px(300), self._px(340))
        self.anna.say(chat, "Who has seen the stapler?")
        probe.wait(lambda: all(f"{name}:" in self.anna.said(chat) for name in ("Berta", "Carl")))
        self.camera.take("chat", chat.text)

    def at_work(self):
        """All windows at once, in the screen corner where alerts appear. The chat is still open."""
        width, height = self._px(620), self._px(470)
        left, top = 1024 - width, 768 - height
        for window, beside in (("frmMain", 20), ("frmChat", 220)):  # the frame is above
            self.camera.move(self.probe.wait_for(window).text, left + self._px(beside), top + self._px(40))
        self.rig.wire.send("Dora|P/\xdfThe printer on the second floor works again.|Anna")
        popup, _ = self.anna.popup_at_rest()
        time.sleep(4)  # until it stops flashing
        self.camera.take_area("at-work", left, top, width, height)
        self.probe.close(popup)

    def save_dialog(self):
        chat = self.probe.wait_for("frmChat")
        self.probe.command(chat, ids.CHAT.mnuExportT)
        dialog = self.probe.wait_for("frmSave")
        self.probe.set_text(self.probe.children(dialog, "Edit")[0], "Stapler")
        self.camera.take("save", dialog.text)
        self.probe.close(dialog)
        self.probe.close(chat)

    def about(self):
        self.probe.command(self.probe.wait_for("frmMain"), ids.MAIN.mnuAbout)
        about = self.probe.wait_for("frmAbout")
        self.camera.take("about", about.text)
        self.probe.close(about)
        self.anna.close()


def main(arguments):
    folder, language, dpi = (arguments + [f"{_ROOT}/docs/pictures", "English", "96"][len(arguments):])[:3]
    return private_machine.run(lambda: Scene(folder, language, int(dpi)).play())


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
