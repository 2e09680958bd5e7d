"""What a screen reader hears, and what the keyboard reaches: every control has a name, log lines and their marks, table
cells and status panels can be read, tabs and buttons can be pressed."""

import os
import sys
import tempfile
import time

import rig

INTERACTIVE = ("check box", "push button", "toggle button", "radio button", "text", "combo box", "list", "table",
               "page tab")
TABLES = {"Targets": 17, "Message counts": 2, "AIS reporting rates": 3}
LOGS = ["Lines of input #1", "Lines of input #2", "Receiver signal log", "AIS messages", "GPS positions",
        "Lines of output"]
REPORT = b"!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0"
OTHER = b"$GPGSV,1,1,00"
REFUSED = b"$GPGLL,5047.10,N,00117.40,W,120000,A*00"
GLL = b"$GPGLL,5047.10,N,00117.40,W,120000,A"
SIGNAL = b"$PNMLS,29,19,3"


def named(eyes, node):
    """By itself, by its label, or, inside an editable combo box, by that."""
    if node.name:
        return True
    labels = (eyes.atspi.RELATION_LABELLED_BY, )
    if any(r.getRelationType() in labels and r.getTarget(0).name for r in node.getRelationSet()):
        return True
    return node.parent.getRoleName() == "combo box" and bool(node.parent.name)


def check_names(eyes):
    """Also those on tabs that do not show: the bus knows them all."""
    count = 0
    for node in eyes.all():
        if node.getRoleName() in INTERACTIVE:
            rig.check(named(eyes, node), f"a {node.getRoleName()} without a name, in {node.parent}")
            count += 1
    rig.check(count > 40, f"only {count} controls on the bus")
    combos = [node for node in eyes.all() if node.getRoleName() == "combo box"]
    for combo in combos:  # their names are their present texts, so the label has to tell what they are
        relations = [r.getTarget(0).name for r in combo.getRelationSet()
                     if r.getRelationType() == eyes.atspi.RELATION_LABELLED_BY]
        rig.check(relations and relations[0] in ("Detail", "Sort by", "Target"), f"combo box {combo.name!r} has no label")
    rig.check(len(combos) == 3, f"{len(combos)} combo boxes")
    return count


def check_tabs(eyes):
    """Each is pressed by its action, as a screen reader does it; what is on it shows."""
    tabs = [node for node in eyes.all() if node.getRoleName() == "page tab"]
    rig.check(sorted(tab.name for tab in tabs) == sorted(rig.TABS), f"tabs: {[tab.name for tab in tabs]}")
    bar = next(node for node in eyes.all() if node.getRoleName() == "page tab list")
    for tab in sorted(tabs, key=lambda tab: rig.TABS.index(tab.name)):
        tab.queryAction().doAction(0)
        rig.await_that(lambda: bar.name == tab.name, f"the tab {tab.name} shows")
    table = eyes.find("table", "AIS reporting rates")
    rig.check(not eyes.has_state(table, eyes.atspi.STATE_SHOWING), "a hidden table says that it shows")
    next(tab for tab in tabs if tab.name == "Spec").queryAction().doAction(0)
    rig.await_that(lambda: eyes.has_state(table, eyes.atspi.STATE_SHOWING), "the table of the tab Spec shows")


def check_tables(eyes):
    for name, columns in TABLES.items():
        table = eyes.find("table", name).queryTable()
        rig.check(table.nColumns == columns, f"{name} has {table.nColumns} columns")
    spec = eyes.rows("AIS reporting rates")
    rig.check(spec[0] == ["Type of Ship", "Class A Rates", "Class B Rates"], f"header: {spec[0]}")
    rig.check(spec[1] == ["Ship at Anchor", "180 sec", "180 sec"] and len(spec) == 14, f"reporting rates: {spec}")


def check_traffic(eyes, lines):
    """One of each kind comes in; every view tells of it."""
    receiver, gps = lines
    gps.write(rig.sentence(GLL) + b"\r\n")
    rig.await_that(lambda: eyes.lines("Lines of input #2"), "a line of input #2")
    receiver.write(b"".join(line + b"\r\n" for line in
                            (rig.sentence(REPORT), rig.sentence(SIGNAL), rig.sentence(OTHER), REFUSED)))
    rig.await_that(lambda: len(eyes.lines("Lines of input #1")) == 5, "the lines of input #1")
    marked, plain = "highlighted", "not highlighted"
    expected = [(rig.sentence(REPORT).decode(), marked), (rig.sentence(SIGNAL).decode(), marked),
                (rig.sentence(OTHER).decode(), plain), (REFUSED.decode(), plain), ("<<Checksum Error>>", plain)]
    rig.check(eyes.lines("Lines of input #1") == expected, f"lines: {eyes.lines('Lines of input #1')}")
    rig.await_that(lambda: eyes.panels()[1] == "Checksum Error", "panel 2 tells the error")
    rig.check(eyes.panels()[0] == "Running", f"panels: {eyes.panels()}")
    rig.check(len(eyes.panels()) == 5, f"panels: {eyes.panels()}")

    # The views of the other tabs take over when they are shown.
    eyes.show_tab("AIS")
    heard = rig.await_that(lambda: eyes.lines("AIS messages"), "the AIS log")
    rig.check("MMSI=366053209" in heard[0][0], f"AIS log: {heard[0]}")
    eyes.show_tab("Receiver")
    rig.await_that(lambda: eyes.lines("Receiver signal log"), "the receiver's log")
    eyes.show_tab("GPS")
    heard = rig.await_that(lambda: eyes.lines("GPS positions"), "the GPS log")
    rig.check("Utc=12:00:00" in heard[0][0], f"GPS log: {heard[0]}")
    latitude = eyes.find("text", "Own latitude").queryText().getText(0, -1)
    rig.check(latitude == "50\xb047.10'N", f"own latitude: {latitude!r}")
    eyes.show_tab("Targets")
    rows = rig.await_that(lambda: (rows := eyes.rows("Targets"))[1:] and rows, "a row in the table")
    header, row = rows[0], rows[1]
    rig.check(header[1] == "MMSI" and header[7] == "Message Id", f"header: {header}")
    rig.check((row[1], row[2], row[3]) == ("366053209", "A", "29"), f"row: {row}")
    eyes.show_tab("Messages")
    rows = rig.await_that(lambda: (rows := eyes.rows("Message counts"))[1:] and rows, "message counts")
    rig.check(any("1" in row for row in rows[1:]), "no message was counted")


def check_keyboard(eyes, program, lines):
    """The toolbar's mnemonics, from wherever the user is."""
    rig.xdotool("windowfocus", program.window())
    rig.xdotool("key", "alt+t")
    rig.await_that(lambda: eyes.panels()[0] == "Stopped", "Alt+T has stopped")
    rig.xdotool("key", "alt+s")
    rig.await_that(lambda: eyes.panels()[0] == "Running", "Alt+S has started")
    start, stop = eyes.find("push button", "Start"), eyes.find("push button", "Stop")
    rig.check(eyes.has_state(start, eyes.atspi.STATE_CHECKED), "Start does not say that it is pressed")
    rig.check(not eyes.has_state(stop, eyes.atspi.STATE_CHECKED), "Stop says that it is pressed")
    # And by the action that a screen reader offers.
    stop.queryAction().doAction(0)
    rig.await_that(lambda: not any(line.listened() for line in lines), "Stop has closed the ports")


def main():
    options = rig.arguments().parse_args()
    rig.skip_without("Xvfb", "xdotool", "dbus-send", rig.AT_SPI_LAUNCHER)
    with tempfile.TemporaryDirectory() as folder, rig.display(), rig.accessibility():
        lines = [rig.SerialLine(os.path.join(folder, name)) for name in ("receiver", "gps")]
        with rig.Program(options.program, folder, rig.profile(*(line.link for line in lines))) as program:
            eyes = rig.Eyes(program)
            count = check_names(eyes)
            check_tabs(eyes)
            check_tables(eyes)
            eyes.show_tab("Input")
            eyes.click(eyes.find("push button", "Start"))
            rig.await_that(lambda: all(line.listened() for line in lines), "the ports are open")
            time.sleep(0.3)  # what comes while a port is being opened belongs to no run
            check_traffic(eyes, lines)
            check_keyboard(eyes, program, lines)
            rig.check(program.close() == 0, f"exit code {program.process.returncode}")
        print(f"{count} controls named")


if __name__ == "__main__":
    sys.exit(rig.run(main))
