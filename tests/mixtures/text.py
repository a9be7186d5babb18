# SPDX-License-Identifier: MIT
"""Random plain text in several encodings, and text with codes for notes and pictures."""

from mixtures.mixture import Mixture


class TextMixture(Mixture):
    def document(self):
        text = self.fill(self.piece)
        encodings = (["utf-8", "utf-8", "utf-8", "utf-8-sig", "utf-16", "utf-16-le", "utf-32"]
                     if self.is_mild else ["utf-8", "utf-16", "utf-16-be", "latin-1", "utf-32"])
        encoding = self.random.choice(encodings)
        if encoding == "utf-16-le":
            text = "\ufeff" + text
        return text.encode(encoding, "replace" if encoding == "latin-1" else "surrogatepass")

    def piece(self):
        return self.pick(
            8, self.text,
            1, self.odd,
            1, lambda: self.one("\n", "\r\n", "\r", "\n\n\n"),
            .2, lambda: self.odd() * self.random.randint(1, 40),
            .2, lambda: "w" * self.one(10, 300, 2000) + " ",
            .1, lambda: "{\\Mvrn_fn=",
            .3, lambda: self.one("INT. HOUSE - DAY\n", "JOHN\n", "(beat)\n", "CUT TO:\n"))


class MarkupMixture(Mixture):
    """Codes of notes, whole, in each other and in pieces."""

    def document(self):
        return self.fill(self.piece).encode("utf-8", "surrogatepass")

    def piece(self):
        return self.nested(self.code, self.text, 5)

    def code(self):
        return self.pick(
            6, self.text,
            1, lambda: "{\\Mvrn_fn=" + self.content() + "\\end_Mvrn_fn} ",
            1, self.annotation,
            1, lambda: "{\\Mvrn_ps=" + self.content() + "\\end_Mvrn_ps} ",
            .5, self.picture,
            .5, lambda: self.one("<$MvrKeepWithNext>", "\n", "\n\n",
                                 "<$mvrkeep<$MvrKeepWithNext>withnext>"),
            .6, self.part_of_code,
            .5, lambda: self.odd() + self.text())

    def content(self):
        return self.noted(lambda: self.many(self.piece, 1, 2))

    def annotation(self):
        red = self.one("1", "0.5", "99", "...", "1" if self.is_mild else "1e9")
        return ("{\\Mvrn_annot%s\\color={\\R=%s\\G=0\\B=1.5}%s\\text=%s\\end_Mvrn_annot} "
                % (self.one(" ", ""), red, self.one(" ", "\u00a0", ""), self.content()))

    def picture(self):
        return ("{$MVRImageLink[w:%s;h:%s]=%s} "
                % (self.one("3", "0", "99999999999", "9999"), self.one("3", "0", "-1", "007"),
                   self.one("x.png", "/dev/zero", "../x", "//srv/y", "in.txt", "")))

    def part_of_code(self):
        return self.one("{\\Mvrn_fn=", "\\end_Mvrn_fn}", "{\\Mvrn_annot", "\\end_Mvrn_annot}",
                        "{\\Mvrn_ps=", "\\end_Mvrn_ps}", "{", "}", "\\", "{$MVRImageLink[w:")
