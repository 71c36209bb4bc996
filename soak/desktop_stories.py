"""Stories of the desktop: its size, colours, fonts and scaling change with every window open; a logoff is cancelled."""

import time

from desks import GREETING, accept, check, run
from rig import copies, ids, network, screen

WM_QUERYENDSESSION, WM_ENDSESSION = 0x0011, 0x0016
FONT_OR_THEME_CHANGED = (0x001D, 0x031A)  # WM_FONTCHANGE, WM_THEMECHANGED
SLIDE_STEP = 4  # pixels of an alert's last step, at 96 dpi
SCALING = 154  # dpi; with it, a screen of 1024 by 768 pixels has the size of 640 by 480 for a program that keeps 96
BOX = "#32770"


def a_new_desktop_with_every_window_open(desks):
    """The screen's size and scaling really change, in a desktop window of Wine. Wine keeps colours and fonts per process,
    so another program's change of them arrives only as messages, and the screenshots do not show it."""
    copy, start = desks.rig.copy("carla", network.Host(), on_screen=screen.Screen()), desks.wire.mark()
    for key, value in (("Explorer", "Default"), ("Explorer\\Desktops", "1024x768")):
        run(copy, "reg", "add", "HKCU\\Software\\Wine\\" + key, "/f", "/d", value, "/v",
            "Default" if "\\" in key else "Desktop")
    copy.write_settings()
    copy.start()
    desks.wire.wait_for(f"carla|M/carla {GREETING}", start)
    _open_windows(desks, copy)
    copy.probe.command(copy.probe.wait_for("frmChat"), ids.CHAT.mnuExportT)
    save_dialog = copy.probe.wait_for("frmSave")
    _play_changes(copy, {"frmSave"})
    copy.probe.close(save_dialog)
    accept(copy, "")
    box = copy.probe.wait_for_box()
    _play_changes(copy, {"frmOpt", BOX})
    copy.probe.answer(box)
    copy.probe.close(copy.probe.wait_for("frmOpt"))
    desks.answers(copy, "after new colours")
    _restart_with_the_new_scaling(desks, copy)


def _open_windows(desks, copy):
    """Opens all windows but the modal ones, with an alert as wide as the screen."""
    copy.open_chat("(All)")
    main = copy.probe.wait_for("frmMain")
    copy.probe.command(main, ids.MAIN.mnuSndAll)
    copy.probe.wait_for("frmCom")
    copy.probe.command(main, ids.MAIN.mnuAbout)
    copy.probe.wait_for("frmAbout")
    desks.wire.send("eve|M/\xdf" + "Hello " * 200)
    copy.probe.wait_for("frmPop")


def _windows(copy):
    return [w for w in copy.probe.windows() if w.visible and (w.class_name.startswith("frm") or w.class_name == BOX)]


def _play_changes(copy, modal):
    before = _windows(copy)
    check({w.class_name for w in before} == {"frmMain", "frmChat", "frmCom", "frmAbout", "frmPop"} | modal,
          f"not every window is open: {before}")

    def change(*words, screen_size=(1024, 768)):
        run(copy, copies.WINDOWS_BUILD + "/soak/desktop.exe", *words)
        time.sleep(0.5)
        shown = _windows(copy)
        check({w.handle for w in shown} == {w.handle for w in before}, f"{words}: other windows: {shown}")
        width, height = screen_size
        lost = [w for w in shown if w.left >= width or w.top >= height or w.right <= 0 or w.top < 0]
        popup = copy.probe.wait_for("frmPop")
        in_corner = popup.left >= 0 and popup.right == width and height - SLIDE_STEP < popup.bottom <= height
        check(in_corner and not lost, f"{words}: off the screen: {lost}, {popup}")
        copy.prefix.screen.save(f"{copies.SCREENSHOTS}/desktop-{max(modal)}-{words[0]}-{words[1]}.png")

    for class_name in {"frmChat"} | modal - {BOX}:  # Windows places message boxes
        change("move", class_name, "850", "600")
    change("size", "640", "480", screen_size=(640, 480))
    change("size", "1024", "768")
    change("colours", "203040")
    change("font", "24")
    for message in FONT_OR_THEME_CHANGED:
        for window in before:
            copy.probe.post(window, message)
    change("scaling", SCALING)
    change("size", "640", "480", screen_size=(640, 480))
    change("size", "1024", "768")
    change("scaling", 96)


def _restart_with_the_new_scaling(desks, copy):
    """The scaling of the start is kept; the next start takes the new one."""
    before = copy.probe.wait_for("frmMain").width
    run(copy, copies.WINDOWS_BUILD + "/soak/desktop.exe", "scaling", SCALING)
    check(copy.probe.wait_for("frmMain").width == before, "the main window has grown")
    copy.close()
    start = desks.wire.mark()
    copy.start()
    desks.wire.wait_for(f"carla|M/carla {GREETING}", start)
    after = copy.probe.show(copy.main()).width
    check(abs(after - before * SCALING / 96) < 2, f"{before} pixels, and {after} after the start with {SCALING} dpi")
    copy.close()


def logoff_cancelled(desks):
    main = desks.anna.probe.wait_for("frmMain", visible=False)
    for message, ending in ((WM_QUERYENDSESSION, 0), (WM_ENDSESSION, 0), (WM_QUERYENDSESSION, 0)):
        answer = desks.anna.probe.send(main, message, ending)
        check(message != WM_QUERYENDSESSION or answer == 1, "the copy refuses the logoff")
    desks.answers(desks.anna, "who stays")
    check(desks.anna.log()[-1] != "Quillon unloaded", "the copy has unloaded")
