"""The text of an edit field: its characters, its lines as they are shown, its selection, and what
can be undone. What is shown is in edit.py.

Positions count characters of a Python text. A field of several lines has CR LF at a line's end,
which is one step for the caret.
"""

LINE_END = "\r\n"


class EditText:
    """Text and selection: `anchor` is where the selection began, `caret` where it ends."""

    def __init__(self, multiline):
        self.multiline = multiline
        self.text = ""
        self.anchor = self.caret = 0
        self.limit = 30000
        self.before = None  # (text, anchor, caret) that undo brings back
        self.modified = False

    @property
    def selection(self):
        return min(self.anchor, self.caret), max(self.anchor, self.caret)

    @property
    def selected(self):
        start, end = self.selection
        return self.text[start:end]

    def set(self, text):
        """All of it anew, with nothing to undo."""
        if not self.multiline:
            text = text.split("\r")[0].split("\n")[0]
        self.text, self.anchor, self.caret, self.before = text, 0, 0, None
        self.modified = False

    def select(self, start, end):
        """As EM_SETSEL has it: 0, -1 is everything, -1 alone is nothing."""
        if start == -1:
            self.anchor = self.caret
            return
        length = len(self.text)
        self.anchor = min(max(start, 0), length)
        self.caret = length if end == -1 else min(max(end, 0), length)

    def replace(self, text):
        """Puts text in the selection's place, as much as the limit lets in; False when nothing
        came of it."""
        start, end = self.selection
        room = self.limit - (len(self.text) - (end - start))
        put = text[:max(0, room)]
        if not put and start == end:
            return False
        self.before = (self.text, self.anchor, self.caret)
        self.text = self.text[:start] + put + self.text[end:]
        self.anchor = self.caret = start + len(put)
        self.modified = True
        return True

    def undo(self):
        if self.before is None:
            return False
        now = (self.text, self.anchor, self.caret)
        self.text, self.anchor, self.caret = self.before
        self.before = now
        return True

    def erase_back(self):
        """Backspace."""
        if self.anchor == self.caret:
            self.anchor = self.step(self.caret, -1)
        return self.replace("")

    def erase_forward(self):
        """Delete."""
        if self.anchor == self.caret:
            self.anchor = self.step(self.caret, 1)
        return self.replace("")

    def step(self, position, way):
        """One character on; a line end is one."""
        if way < 0 and self.text[max(0, position - 2):position] == LINE_END:
            return position - 2
        if way > 0 and self.text[position:position + 2] == LINE_END:
            return position + 2
        return min(max(position + way, 0), len(self.text))

    def word_step(self, position, way):
        """To the beginning of a word."""
        text = self.text
        if way > 0:
            while position < len(text) and not text[position].isspace():
                position += 1
            while position < len(text) and text[position].isspace():
                position += 1
            return position
        while position > 0 and text[position - 1].isspace():
            position -= 1
        while position > 0 and not text[position - 1].isspace():
            position -= 1
        return position

    def word_at(self, position):
        """(start, end) of the word around a position."""
        start = end = position
        while start > 0 and not self.text[start - 1].isspace():
            start -= 1
        while end < len(self.text) and not self.text[end].isspace():
            end += 1
        return start, end

    def lines(self, font, width):
        """The lines that are shown, as (start, end) without line ends; broken at `width` pixels
        when it is given."""
        found, start = [], 0
        for paragraph in self.text.split(LINE_END):
            found += broken(self.text, start, start + len(paragraph), font, width)
            start += len(paragraph) + len(LINE_END)
        return found


def broken(text, start, end, font, width):
    """One paragraph as lines no wider than `width`."""
    if width is None:
        return [(start, end)]
    found = []
    while font.width(text[start:end]) > width:
        fits = start
        for edge in font.advances(text[start:end]):
            if edge > width:
                break
            fits += 1
        blank = text.rfind(" ", start, fits + 1)
        stop = blank + 1 if blank > start else max(fits, start + 1)
        found.append((start, stop))
        start = stop
    return found + [(start, end)]
