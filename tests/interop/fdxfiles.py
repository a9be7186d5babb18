# SPDX-License-Identifier: MIT
"""Final Draft files as programs write them, and odder ones, by a seed."""
import random

WORDS = ("lamp river ADA Ben's café “quoted” naïve 🎬 door — low-tide 12 a O'Neil x.y (beat) INT. EXT. "
         "日本 e\u0301 &amp; &lt;b&gt; &quot; &apos; &#233; &#x1F600;").split()
STYLES = ("", "", "", "Italic", "AllCaps", "Bold", "Underline", "Underline+AllCaps", "Bold+AllCaps",
          "WordUnderline", "Bold+Italic", "SmallCaps", "Strikeout", "HiddenText", "DottedUnderline")
FONT = ('AdornmentStyle="%s" Background="#FFFFFFFFFFFF" Color="%s" Font="%s" RevisionID="%d" Size="%s" '
        'Style="%s"')
TYPES = (["Dialogue"] * 5 + ["Character"] * 4 + ["Action"] * 5 + ["Scene Heading"] * 3
         + ["Parenthetical", "Transition", "Shot", "General", "Outline 1", "Note", "Cast List", "Lyrics",
            "End of Act", "Odd 'type'", None, ""])
SHAPES = ("", ' Alignment="Left"', ' Alignment="Center" FirstIndent="-0.10" LeftIndent="1.25" '
          'RightIndent="7.00" SpaceBefore="24" Spacing="1.5"')


class Maker:
    """Makes one file; every other word is a word of its own, by which it can be edited."""

    def __init__(self, seed):
        self.random = random.Random(seed)
        self.words = 0
        self.version = self.pick("1", "2", "3", "5", "5", "6", "6", None)
        self.has_old_notes = self.version in ("1", "2", "3", None)

    def pick(self, *of):
        return self.random.choice(of)

    def chance(self, of):
        return self.random.random() < of

    def word(self):
        self.words += 1
        return f"w{self.words}q" if self.chance(.5) else self.pick(*WORDS)

    def text(self, most=9):
        count = self.random.randint(0, most)
        if count == 0:
            return self.pick("", "", " ", "  ", "\t", "&#xA;")
        text = self.pick(*[""] * 9, " ", "\t", "\n") + self.word()
        for _ in range(count - 1):
            text += self.pick(*[" "] * 12, "  ", "\t", "\n", "&#xA;", "\u2028", " &#9; ", "\u00a0")
            text += self.word()
        return text + self.pick("", "", "", " ", ".", "!", "\n")

    def run(self, text=None):
        attributes = self.pick(
            "", "", "", ' Style="%s"' % self.pick(*STYLES), ' RevisionID="3"',
            " TagNumber='7' Style='Bold'", " " + FONT % (
                self.pick("0", "-1"), self.pick("#000000000000", "#FFFF00000000", "#123456789ABC"),
                self.pick("Courier Final Draft", "Arial", "Courier &quot;New&quot;"),
                self.random.randint(0, 5), self.pick("12", "14.5"), self.pick(*STYLES)))
        text = self.text() if text is None else text
        return f"<Text{attributes}/>" if not text and self.chance(.5) else f"<Text{attributes}>{text}</Text>"

    def runs(self, gap):
        if self.chance(.15):  # a word that the spelling check marked
            return gap.join(["<Text>See </Text>", f'<Text AdornmentStyle="-1">{self.word()}</Text>',
                             f"<Text> the {self.word()}.</Text>"])
        return self.pick("", gap).join(self.run() for _ in range(self.pick(0, 1, 1, 1, 1, 2, 3, 5)))

    def date(self):
        draw = self.random.randint
        return "%04d%02d%02dT%02d%02d%02d" % (draw(2005, 2024), draw(1, 12), draw(1, 28), draw(0, 23),
                                              draw(0, 59), draw(0, 59))

    def note(self, attributes):
        if self.chance(.05):
            return f"<ScriptNote {attributes}/>"
        paragraphs = [f"<Paragraph{self.pick(*SHAPES)}>" + "".join(
            self.run() for _ in range(self.pick(0, 1, 1, 2))) + "</Paragraph>"
            for _ in range(self.pick(1, 1, 1, 2, 5))]
        return f"<ScriptNote {attributes}>" + self.pick("", "\n").join(paragraphs) + "</ScriptNote>"

    def note_in_paragraph(self):
        if self.version in ("1", None):
            return self.note('ID="%d"' % self.random.randint(1, 3))
        attributes = [f'Name="{self.pick("", "n &amp; m")}"', f'Type="{self.pick("", "Polish")}"',
                      f'Color="{self.pick("#000000000000", "#FFFFC8C80000")}"',
                      f'DateTime="{self.date()}"', f'DateModified="{self.date()}"']
        if self.chance(.6):
            attributes.append('Author="%s"' % self.pick("", "Eve", "Zoë &quot;Z&quot;"))
        self.random.shuffle(attributes)
        return self.note(" ".join(attributes))

    def note_with_range(self, number, length):
        start = self.random.randint(0, length)
        end = start + self.pick(0, self.random.randint(0, 12), self.random.randint(0, 200))
        return self.note(
            f'Color="{self.pick("#000000000000", "#89895757CFCF")}" DateModified="{self.date()}" '
            f'DateTime="{self.date()}" Id="{number}" Name="{self.pick("", "x")}" Range="{start},{end}" '
            f'Type="{self.pick("", "Writer")}" WriterID="z" '
            f'WriterName="{self.pick("", "A. Nobody", "Łukasz &lt;l@x&gt;")}"')

    def attributes(self, kind):
        attributes = [] if kind is None else [f'Type="{kind}"']
        if self.chance(.12):
            attributes.append('Number="%s"' % self.pick("1", "12A", ""))
        if self.chance(.15):
            attributes.append(SHAPES[2].strip())
        for attribute in ('StartsNewPage="Yes"', 'Label="L1"', 'Bookmark="b"'):
            if self.chance(.05):
                attributes.append(attribute)
        if self.version == "6":
            attributes.append(f'id="{self.random.getrandbits(32):08x}"')
        self.random.shuffle(attributes)
        return attributes

    def extras(self):
        """What stands in paragraphs now and then and is no text of theirs."""
        return [extra for extra in (
            '<Alts Current="0"><AltId>1</AltId></Alts>', '<DynamicLabel Type="Page #"/>', '<Image Id="1"/>',
            f'<OmittedScene><Paragraph Type="Action"><Text>{self.text(4)}</Text></Paragraph></OmittedScene>')
            if self.chance(.04)]

    def paragraph(self, indent, is_inner=False):
        kind = self.pick(*TYPES)
        head = " ".join(["<Paragraph"] + self.attributes(kind))
        gap = "\n" + indent + "  "
        children = []
        if kind in ("Scene Heading", "Shot") and self.chance(.6):
            children.append(
                f'<SceneProperties Length="1 3/8" Page="2" Title="T {self.word()}"><Summary><Paragraph>'
                f"<Text>{self.text(3)}</Text></Paragraph></Summary></SceneProperties>")
        if self.has_old_notes and self.chance(.12):
            children += [self.note_in_paragraph() for _ in range(self.pick(1, 1, 3))]
        if not is_inner and self.chance(.08):
            inner = "".join(self.paragraph(indent + "    ", True) for _ in range(self.random.randint(1, 6)))
            children.append(f"<DualDialogue>\n{inner}{indent}  </DualDialogue>")
            children.append(self.pick("", "", "<Text></Text>"))
        else:
            children.append(self.runs(gap))
            if self.has_old_notes and self.chance(.1):
                children += [self.note_in_paragraph(), self.pick("", self.runs(gap))]
            children += self.extras()
        children = [child for child in children if child]
        if not children:
            return indent + head + self.pick("/>", "></Paragraph>", f">\n{indent}</Paragraph>", " />") + "\n"
        gap, end = self.pick((gap, "\n" + indent), (gap, "\n" + indent), ("", ""))
        return f"{indent}{head}>" + "".join(gap + child for child in children) + f"{end}</Paragraph>\n"

    def title_page(self):
        paragraphs = "".join(
            f'      <Paragraph Alignment="Center"><Text>{self.text()}</Text></Paragraph>\n'
            for _ in range(self.random.randint(0, 6)))
        return f"  <TitlePage>\n    <Content>\n{paragraphs}    </Content>\n  </TitlePage>\n"

    def settings(self, kind):
        style = self.pick("", "AllCaps", "Bold", "Underline+AllCaps")
        return (f'  <ElementSettings Type="{kind}">\n    <FontSpec '
                + FONT % ("0", "#000000000000", "Courier Final Draft", 0, "12", style)
                + '/>\n    <ParagraphSpec Alignment="Left" FirstIndent="0.00" Leading="Regular" '
                f'LeftIndent="{self.pick("1.50", "2.50")}" RightIndent="7.00" SpaceBefore="12" Spacing="1" '
                'StartsNewPage="No"/>\n    <Behavior PaginateAs="Action" ReturnKey="Action"/>\n'
                "  </ElementSettings>\n")

    def parts(self):
        body = "".join(self.paragraph("    ") for _ in range(self.pick(1, 3, 10, 25)))
        parts = [f"  <Content>\n{body}  </Content>\n"]
        if self.chance(.7):
            parts.append(self.title_page())
        kinds = sorted({kind for kind in TYPES if kind})
        parts += [self.settings(kind) for kind in kinds if self.chance(.5)] if self.chance(.8) else []
        if self.chance(.9):
            parts.append(f'  <PageLayout BottomMargin="72" TopMargin="{self.pick(72, 36, 90)}"/>\n')
        if self.version in ("2", "3") and self.chance(.6):
            parts.append(f"  <UnanchoredScriptNotes>{self.note_in_paragraph()}</UnanchoredScriptNotes>\n")
        if self.version in ("5", "6"):
            notes = "".join(f"    {self.note_with_range(i + 1, len(body) // 3)}\n"
                            for i in range(self.pick(0, 1, 3, 12)))
            parts.append(f"  <ScriptNotes>\n{notes}  </ScriptNotes>\n" if notes else "  <ScriptNotes/>\n")
        if self.chance(.4):
            parts.append('  <Actors><Actor Name="a" Voice="\x7f\u0080\ufffd$%!"/></Actors>\n')
        if self.chance(.3):
            parts.append(f'  <ListItems><ListItem><Paragraph Type="Outline 1"><Text>card {self.word()}'
                         "</Text></Paragraph></ListItem></ListItems>\n")
        if self.chance(.5):
            self.random.shuffle(parts)
        return parts

    def file(self):
        version = f' Version="{self.version}"' if self.version else ""
        declaration = '<?xml version="1.0" encoding="UTF-8" standalone="no" ?>\n'
        text = self.pick(declaration, declaration, declaration, "", " ", "\n", "\ufeff" + declaration)
        text += f'<FinalDraft DocumentType="Script" Template="No"{version}>\n' + "".join(self.parts())
        text += "</FinalDraft>" + self.pick("", "\n", "\n\n")
        return (text.replace("\n", "\r\n") if self.chance(.35) else text).encode()
