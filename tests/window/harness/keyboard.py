"""Keys through XTEST, for every Unicode character."""
import contextlib

from Xlib import X, XK
from Xlib.ext import xtest

MODIFIERS = {"ctrl": "Control_L", "shift": "Shift_L", "alt": "Alt_L"}
CONTROLS = {"\n": "Return", "\t": "Tab"}


def keysym(character):
    """The X keysym of a character: Latin-1 is its own keysym, the rest has a range of its own."""
    code = ord(character)
    return code if code < 0x100 else 0x01000000 + code


class Keyboard:
    """The keyboard of a display. Characters that it has no key for get one of the unused keys,
    which keep their character as long as there are others left."""

    def __init__(self, display):
        self._display = display
        first = display.display.info.min_keycode
        count = display.display.info.max_keycode - first + 1
        self._keys = {}
        self._spare = []
        for code, row in enumerate(display.get_keyboard_mapping(first, count), first):
            if not any(row):
                self._spare.append(code)
            for shift in (0, 1):
                if row[shift:] and row[shift]:
                    self._keys.setdefault(row[shift], (code, bool(shift)))
        self._lent = {}
        # A server kept waiting between a press and its release must not repeat the key.
        display.change_keyboard_control(auto_repeat_mode=X.AutoRepeatModeOff)

    def press(self, combination):
        """Presses a key by its X name ("Tab", "a") or with modifiers ("ctrl+v", "shift+Tab")."""
        *modifiers, name = combination.split("+")
        symbol = keysym(name) if len(name) == 1 else XK.string_to_keysym(name)
        held = [self._keys[XK.string_to_keysym(MODIFIERS[modifier])][0] for modifier in modifiers]
        self._send(self._keys[symbol], held)

    @contextlib.contextmanager
    def holding(self, modifier):
        """Keeps a modifier pressed: "ctrl", "shift" or "alt"."""
        code = self._keys[XK.string_to_keysym(MODIFIERS[modifier])][0]
        xtest.fake_input(self._display, X.KeyPress, code)
        self._display.sync()
        yield
        xtest.fake_input(self._display, X.KeyRelease, code)
        self._display.sync()

    def type(self, text, settle):
        """Types the text; settle() must see to it that the program has taken the keys so far."""
        for character in text:
            if character in CONTROLS:
                self.press(CONTROLS[character])
            else:
                self._send(self._keys.get(keysym(character)) or self._lend(character, settle), [])
        settle()

    def _lend(self, character, settle):
        symbol = keysym(character)
        if symbol not in self._lent:
            if not self._spare:  # the key that was lent first goes to the new character
                settle()
                self._spare.append(self._lent.pop(next(iter(self._lent))))
            self._lent[symbol] = self._spare.pop(0)
            self._display.change_keyboard_mapping(self._lent[symbol], [(symbol, symbol)])
            self._display.sync()
        return self._lent[symbol], False

    def _send(self, key, held):
        code, shifted = key
        if shifted:
            held = [*held, self._keys[XK.XK_Shift_L][0]]
        for modifier in held:
            xtest.fake_input(self._display, X.KeyPress, modifier)
        xtest.fake_input(self._display, X.KeyPress, code)
        xtest.fake_input(self._display, X.KeyRelease, code)
        for modifier in reversed(held):
            xtest.fake_input(self._display, X.KeyRelease, modifier)
        self._display.sync()
