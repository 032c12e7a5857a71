"""Finds controls of the program by role and name over the accessibility bus, and waits for their states."""

import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 120  # seconds; long enough for a busy machine
BETWEEN_LOOKS = 0.05

Role = Atspi.Role
State = Atspi.StateType


class NotFound(Exception):
    pass


def waited_for(look, what, explain=lambda: ""):
    """Calls the function until it returns something that counts as true, and returns that."""
    end = time.monotonic() + PATIENCE
    while True:
        try:
            found = look()
            if found:
                return found
        except GLib.Error:
            pass  # The control has just gone.
        if time.monotonic() > end:
            raise NotFound(f"{what}\n{explain()}")
        context = GLib.MainContext.default()
        while context.pending():
            context.iteration(False)
        time.sleep(BETWEEN_LOOKS)


def children(parent):
    for index in range(parent.get_child_count()):
        child = parent.get_child_at_index(index)
        if child is not None:
            yield child


def has(control, state):
    return control.get_state_set().contains(state)


def all_below(control):
    """Yields the control and everything visible below it."""
    yield control
    for child in children(control):
        try:
            if has(child, State.VISIBLE):
                yield from all_below(child)
        except GLib.Error:
            continue  # The child has just gone.


def tree(control, depth=0):
    lines = [f"{'  ' * depth}{control.get_role_name()} '{control.get_name()}'"]
    for child in children(control):
        if has(child, State.VISIBLE):
            lines.append(tree(child, depth + 1))
    return "\n".join(lines)


class Reader:
    """A screen reader that follows one program."""

    def __init__(self, process):
        self.process = process
        self.focused = []
        self.application = waited_for(self._application, "the program on the bus")
        self.application.set_cache_mask(Atspi.Cache.NONE)
        self._listener = Atspi.EventListener.new(self._heard)
        self._listener.register("object:state-changed:focused")

    def _application(self):
        if self.process.poll() is not None:
            raise NotFound(f"the program ended with {self.process.returncode}")
        for each in children(Atspi.get_desktop(0)):
            if each.get_process_id() == self.process.pid:
                return each
        return None

    def _heard(self, event):
        if event.detail1:
            try:
                self.focused.append(event.source.get_name())
            except GLib.Error:
                pass  # The control has just gone.

    def find_all(self, role, name):
        return [each for each in all_below(self.application) if each.get_role() == role and each.get_name() == name]

    def find(self, role, name):
        """Waits for the only control with this role and name."""

        def look():
            if self.process.poll() is not None:
                raise NotFound(f"the program ended with {self.process.returncode}")
            found = self.find_all(role, name)
            return found[0] if len(found) == 1 else None

        return waited_for(look, f"one {role.value_nick} '{name}'", lambda: tree(self.application))

    def press(self, name):
        button = self.find(Role.PUSH_BUTTON, name)
        self.act(button, "Press")

    def act(self, control, action):
        names = [Atspi.Action.get_action_name(control, i) for i in range(Atspi.Action.get_n_actions(control))]
        assert action in names, f"{control.get_name()} has the actions {names}"
        Atspi.Action.do_action(control, names.index(action))

    def wait_gone(self, role, name):
        waited_for(lambda: not self.find_all(role, name), f"no {role.value_nick} '{name}'")

    def focus(self, control):
        """Moves the focus to the control unless it is there, and waits until the program tells so."""
        if has(control, State.FOCUSED):
            return
        name = control.get_name()
        self.focused.clear()
        self.act(control, "SetFocus")
        self.wait_focused(name)

    def wait_focused(self, *names):
        """Waits until these controls have told that they got the focus, in this order."""
        waited_for(lambda: self.focused[-len(names) :] == list(names), f"the focus on {names}", lambda: self.focused)

    def key(self, *keys):
        self.focused.clear()
        subprocess.run(["xdotool", "key", "--clearmodifiers", *keys], check=True)

    def write(self, control, text):
        """Replaces the contents of a box, as dictation does."""
        assert Atspi.EditableText.set_text_contents(control, text)
        waited_for(lambda: self.text(control) == text, f"the text '{text}'", lambda: self.text(control))

    @staticmethod
    def text(control):
        return Atspi.Text.get_text(control, 0, Atspi.Text.get_character_count(control))
