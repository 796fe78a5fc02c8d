# SPDX-FileCopyrightText: 2026 Kestle contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""read_out_road.py INSERT INSERTED: culls a card of four photographs as a user of a screen reader
does. A line to INSERT asks for the card; its name and its mount point come by INSERTED."""

import os
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 15  # seconds
QUIET = 0.6  # seconds after which nothing more is said of what was done


class Reader:
    """What is heard, and the controls that are found by role and name."""

    def __init__(self):
        self.heard = []
        self._listener = Atspi.EventListener.new(self._hear)
        self._listener.register("object:state-changed:showing")
        self._context = GLib.MainContext.default()

    def _hear(self, event):
        if event.detail1 != 1:
            return
        try:
            if event.source.get_role() == Atspi.Role.NOTIFICATION:
                event.source.clear_cache()
                self.heard.append(event.source.get_name())
        except GLib.Error:
            pass  # what has gone since says nothing

    def let_pass(self, seconds):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            while self._context.iteration(False):
                pass
            time.sleep(0.01)

    def wait(self, condition, what):
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            answer = condition()
            if answer:
                return answer
            self.let_pass(0.05)
        sys.exit(f"{what} does not come. Heard: {self.heard}\nSeen: {self.seen()}")

    def controls(self):
        """Everything that shows, as (role, name, object)."""
        try:
            desktop = Atspi.get_desktop(0)
            for index in range(desktop.get_child_count()):
                application = desktop.get_child_at_index(index)
                if application and application.get_name() == "Kestle":
                    application.clear_cache()
                    yield from self._below(application, 0)
        except GLib.Error:
            return  # something went meanwhile: it is asked for again

    def _below(self, parent, depth):
        for index in range(parent.get_child_count() if depth < 40 else 0):
            child = parent.get_child_at_index(index)
            if not child or not child.get_state_set().contains(Atspi.StateType.SHOWING):
                continue
            yield child.get_role_name(), child.get_name(), child
            yield from self._below(child, depth + 1)

    def seen(self):
        return [(role, name) for role, name, _ in self.controls()]

    def find(self, role, name):
        def found():
            matching = [control for r, n, control in self.controls() if r == role and n == name]
            if len(matching) > 1:
                sys.exit(f"There are {len(matching)} of {role} “{name}”")
            return matching[0] if matching else None

        return self.wait(found, f"{role} “{name}”")

    def press(self, role, name):
        control = self.find(role, name)
        action = control.get_action_iface()
        names = [action.get_action_name(i) for i in range(action.get_n_actions())] if action else []
        if "Press" not in names:
            sys.exit(f"{role} “{name}” cannot be pressed: {names}")
        action.do_action(names.index("Press"))

    def choose(self, menu, command):
        """A command of the main menu."""
        self.press("push button", "Menu")
        self.press("menu item", menu)
        self.press("menu item", command)

    def expect(self, text, on_the_way=()):
        """@p text is the only thing said, once; what is told of on the way may come before it, once."""
        self.wait(lambda: text in self.heard, f"“{text}”")
        self.let_pass(QUIET)
        before = self.heard[:-1]
        if self.heard[-1:] != [text] or len(set(before)) != len(before) or \
                not set(before) <= set(on_the_way):
            sys.exit(f"Instead of “{text}” was said: {self.heard}")
        self.heard.clear()
        print(f"heard: {text}")


def cull(reader, photographs):
    reader.press("push button", "Start")
    reader.expect(f"Culling. 1 of 4, {photographs[0]}. 0 rejected.", [f"Scanning {reader.card}."])

    reader.choose("Cull", "Reject (X)")
    reader.expect(f"Rejected. 1 rejected. 2 of 4, {photographs[1]}.")
    reader.press("list item", photographs[2])
    reader.expect(f"3 of 4, {photographs[2]}.")
    reader.choose("Cull", "Reject (X)")
    reader.expect(f"Rejected. 2 rejected. 4 of 4, {photographs[3]}.")
    reader.choose("Edit", "Undo Decision")
    reader.expect(f"No longer rejected. 1 rejected. 3 of 4, {photographs[2]}.")
    reader.choose("Cull", "Reject (X)")
    reader.expect(f"Rejected. 2 rejected. 4 of 4, {photographs[3]}.")
    reader.choose("Cull", "Zoom 100% (Z)")
    reader.expect("Zoom 100%.")
    reader.choose("Cull", "Zoom 100% (Z)")
    reader.expect("Whole picture.")


def review(reader, photographs, folder):
    reader.choose("Cull", "Finish Culling → Review")
    reader.expect(f"Rejects — last look. 1 of 2, {photographs[0]}. 2 rejected.")
    reader.press("list item", photographs[2])
    reader.expect(f"2 of 2, {photographs[2]}.")

    sizes = sum(os.path.getsize(os.path.join(folder, photographs[i])) for i in (0, 2))
    size = f"{sizes / 1000:.0f} KB" if sizes < 999_500 else f"{sizes / 1e6:.1f} MB".replace(".0 ", " ")
    reader.press("push button", f"Delete 2 items — 2 files, {size}")
    reader.find("dialog", "Permanently delete 2 files from the card?")
    reader.find("push button", "Cancel")
    reader.press("push button", "Delete 2 files")
    reader.expect("Deleted 2 files, kept 2 items.", ["Deleting 2 files."])


def main():
    insert, inserted = sys.argv[1:]
    reader = Reader()
    print("listening")
    reader.find("label", "Insert an SD card")
    reader.expect("Insert an SD card.")

    with open(insert, "w", encoding="utf-8") as pipe:
        pipe.write("now\n")
    with open(inserted, encoding="utf-8") as pipe:
        reader.card, root = pipe.read().splitlines()
    folder = os.path.join(root, "DCIM/100ROAD")
    photographs = [f"ROAD{number}.JPG" for number in range(1, 5)]
    reader.expect(f"{reader.card}. Press Return to start culling.")

    cull(reader, photographs)
    review(reader, photographs, folder)
    left = sorted(os.listdir(folder))
    if left != [photographs[1], photographs[3]]:
        sys.exit(f"The card holds {left}")
    reader.press("push button", "Done")
    reader.expect(f"{reader.card}. Press Return to start culling.")
    print("The whole road by ear: 2 of 4 photographs deleted.")


main()
