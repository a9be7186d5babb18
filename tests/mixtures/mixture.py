# SPDX-License-Identifier: MIT
"""What all kinds of random documents share: words that can be found again, numbers, odd letters.

Each word stands once in a document, and its first letter says where: "q" in the text, "n" in a
note, "h" where no output need show it. "q17z" cannot be found inside another word.
"""

import contextlib
import re

WORD = re.compile(r"[qn]\d+z")

ODD_LETTERS = ["\u05d0\u05d1", "\u0627\u0644", "\u65e5\u672c", "\U0001f600", "\u0e44\u0e17\u0e22",
               "e\u0301", "\u00e9", "\u2028", "\u2029", "\u200d", "\ufeff", "\u00ad", "\u00a0",
               "\u202e", "\u202c", "\u2066", "\u2069", "\ufffc", "\ufffd", "\uffff", "\ufdd0",
               "\ue000", "\t", " ", "  ", "\u200b", "\u2003", "\u0001", "\u000b", "\u000c",
               "\u001f", "\u007f", "\u0085", "\U0010ffff", "\u1100\u1161", "\u00df", "\u0130",
               "\u0345", "\u2011", "\u00b7"]
# Those that change the order of letters on a page, where words are looked for in that order.
TURNING = {"\u05d0\u05d1", "\u0627\u0644", "\u202e", "\u2066"}

# Of one pixel.
PICTURE = ("data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9Q"
           "DwADhgGAWjR9awAAAABJRU5ErkJggg==")

SENSIBLE = ["0", "1", "2", "3", "20", "120", "360", "720", "1440", "2880", "-360"]
WHOLE = ["0", "1", "-1", "2", "9", "99", "32767", "32768", "-32768", "65535", "65536",
         "2147483647", "-2147483648", "2147483648", "99999999999", "", "-", "007"]
NUMBERS = WHOLE + ["1e308", "-1e308", "NaN", "inf", "-0", "0.5", "1e-308", "0x10", "  3 ", "+5",
                   "1,5", "4.9e-324"]


class Mixture:
    """Makes one document of about `size` characters; `random` decides everything else."""

    def __init__(self, random, size, is_mild):
        self.random = random
        self.size = size
        self.is_mild = is_mild
        self.is_plain = is_mild and random.random() < .6  # every word has a place on a page
        self.count = 0
        self.depth = 0
        self.place = "q"
        self.is_over = False  # what follows may be part of something that was not closed

    @contextlib.contextmanager
    def inside(self, place):
        """Words made in here stand in a note ("n") or are hidden ("h"), also for notes in them."""
        before = self.place
        if before != "h":
            self.place = place
        yield
        self.place = before

    def hidden(self, make):
        with self.inside("h"):
            return make()

    def noted(self, make):
        with self.inside("n"):
            return make()

    def words(self, count=None):
        made = []
        for _ in range(count or self.random.choice([1, 1, 1, 2, 3, 6])):
            self.count += 1
            made.append("%s%dz" % ("h" if self.is_over else self.place, self.count))
        return " ".join(made)

    def noted_word(self):
        """A note behind a word: of two beside each other, also of two paragraphs, one is made."""
        return self.words(1) + " {\\Mvrn_fn=" + self.noted(self.words) + "\\end_Mvrn_fn} "

    def text(self):
        return self.words() + " "

    def chance(self, probability):
        return self.random.random() < probability

    def one(self, *choices):
        return self.random.choice(choices)

    def pick(self, *weighted):
        """What one of the functions makes, each of which comes behind its weight."""
        weights = weighted[0::2]
        return self.random.choices(weighted[1::2], weights)[0]()

    def many(self, make, least=1, most=4):
        return "".join(make() for _ in range(self.random.randint(least, most)))

    def nested(self, make, leaf, limit=6, step=1):
        if self.depth >= limit:
            return leaf()
        self.depth += step
        try:
            return make()
        finally:
            self.depth -= step

    def whole(self):
        return self.some_number(SENSIBLE, WHOLE)

    def number(self):
        """Also a length, which may be one in inches."""
        return self.some_number(["0", "1", "2", "3"] if self.is_plain else SENSIBLE, NUMBERS)

    def some_number(self, sensible, odd):
        is_sensible = self.is_plain or (self.is_mild and self.chance(.85))
        return self.random.choice(sensible if is_sensible else odd)

    def odd(self):
        letters = self.random.choice(ODD_LETTERS)
        return " " if letters in TURNING and self.is_mild else letters

    def fill(self, make):
        """Pieces up to the size."""
        pieces, length = [], 0
        while length < self.size:
            pieces.append(make())
            length += len(pieces[-1]) + 1
        return "".join(pieces)
