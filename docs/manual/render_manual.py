#!/usr/bin/python3
"""Renders the user manual from Markdown into a PDF.

  render_manual.py SOURCE.md OUT.pdf --version 1.0.0 --pictures DIR [--pictures DIR ...]
                   [--missing LIST.txt]

The source starts with the title page's fields ("Title:", "Subtitle:",
"Cover:"); the text before the first chapter goes on the title page, followed
by the list of chapters. Every "# " chapter starts a new page. "{{version}}"
in the text becomes the version.

A paragraph that holds only pictures is a row of figures, each captioned by
its alt text. A picture's attributes give its width ({: width="12cm" }) and
may cut out a part of it (crop="left,top,right,bottom" in pixels). Pictures
are looked up in the --pictures folders in order; one that none of them holds
is drawn as a framed placeholder and its name is written to the --missing
list, so that a release can refuse a manual with placeholders.

The PDF is only rewritten when its bytes change, so that what depends on it
is rebuilt only when the manual really changed.
"""

import argparse
import io
import os
import sys
import xml.etree.ElementTree as ET
from xml.sax.saxutils import escape

import markdown
from PIL import Image as PilImage
from reportlab import rl_config
from reportlab.lib import colors
from reportlab.lib.enums import TA_CENTER
from reportlab.lib.pagesizes import A4
from reportlab.lib.styles import ParagraphStyle
from reportlab.lib.units import cm
from reportlab.pdfbase import pdfmetrics
from reportlab.pdfbase.ttfonts import TTFont
from reportlab.platypus import (Image, KeepTogether, ListFlowable, ListItem, PageBreak,
                                Paragraph, SimpleDocTemplate, Spacer, Table, TableStyle)

FONT_DIR = "/usr/share/fonts/truetype/dejavu"
ACCENT = colors.HexColor("#8c1c24")
FRAME = colors.HexColor("#9a9a9a")
TEXT_WIDTH = A4[0] - 4 * cm
# Flatter than any of the real pictures, so that a placeholder never pushes a
# chapter onto a second page.
PLACEHOLDER_ASPECT = 0.3


def register_fonts():
    faces = {"Sans": "DejaVuSans", "Sans-Bold": "DejaVuSans-Bold",
             "Sans-Italic": "DejaVuSans-Oblique", "Sans-BoldItalic": "DejaVuSans-BoldOblique",
             "Mono": "DejaVuSansMono"}
    for name, file in faces.items():
        pdfmetrics.registerFont(TTFont(name, os.path.join(FONT_DIR, file + ".ttf")))
    pdfmetrics.registerFontFamily("Sans", normal="Sans", bold="Sans-Bold",
                                  italic="Sans-Italic", boldItalic="Sans-BoldItalic")


def make_styles():
    body = ParagraphStyle("body", fontName="Sans", fontSize=10, leading=14, spaceAfter=6)
    return {
        "body": body,
        "title": ParagraphStyle("title", body, fontName="Sans-Bold", fontSize=34, leading=40,
                                textColor=ACCENT, spaceAfter=8),
        "subtitle": ParagraphStyle("subtitle", body, fontSize=15, leading=20, spaceAfter=4),
        "edition": ParagraphStyle("edition", body, textColor=colors.dimgrey, spaceAfter=18),
        "h1": ParagraphStyle("h1", body, fontName="Sans-Bold", fontSize=20, leading=24,
                             textColor=ACCENT, spaceAfter=12),
        "h2": ParagraphStyle("h2", body, fontName="Sans-Bold", fontSize=13, leading=17,
                             spaceBefore=8, spaceAfter=4, keepWithNext=1),
        "h3": ParagraphStyle("h3", body, fontName="Sans-Bold", fontSize=11, leading=15,
                             spaceBefore=4, spaceAfter=2, keepWithNext=1),
        "caption": ParagraphStyle("caption", body, fontName="Sans-Italic", fontSize=8.5,
                                  leading=11, alignment=TA_CENTER, textColor=colors.dimgrey),
        "cell": ParagraphStyle("cell", body, fontSize=9, leading=12, spaceAfter=0),
        "contents": ParagraphStyle("contents", body, fontSize=11, leading=17, spaceAfter=0),
    }


def inline(element):
    """The element's content as the paragraph markup of the PDF library."""
    parts = [escape(element.text or "")]
    for child in element:
        content = inline(child)
        if child.tag == "strong":
            parts.append(f"<b>{content}</b>")
        elif child.tag == "em":
            parts.append(f"<i>{content}</i>")
        elif child.tag == "code":
            parts.append(f'<font face="Mono">{content}</font>')
        elif child.tag == "a":
            href = escape(child.get("href", ""), {'"': "&quot;"})
            parts.append(f'<a href="{href}" color="#8c1c24">{content}</a>')
        elif child.tag == "br":
            parts.append("<br/>")
        else:
            parts.append(content)
        parts.append(escape(child.tail or ""))
    return "".join(parts)


def length(text):
    """A length such as "12cm" in points."""
    return float(text[:-2]) * cm if text.endswith("cm") else float(text)


class Manual:
    def __init__(self, picture_dirs):
        self.picture_dirs = picture_dirs
        self.styles = make_styles()
        self.missing = []

    def find_picture(self, name):
        for folder in self.picture_dirs:
            path = os.path.join(folder, name)
            if os.path.isfile(path):
                return path
        return None

    def picture(self, img, width):
        """The picture at the given width, or a placeholder of that width."""
        name = img.get("src")
        path = self.find_picture(name)
        if path is None:
            self.missing.append(name)
            height = width * PLACEHOLDER_ASPECT
            label = Paragraph(f"Picture to come:<br/>{escape(name)}", self.styles["caption"])
            box = Table([[label]], colWidths=[width], rowHeights=[height])
            box.setStyle(TableStyle([("BOX", (0, 0), (-1, -1), 0.8, FRAME),
                                     ("BACKGROUND", (0, 0), (-1, -1), colors.whitesmoke),
                                     ("VALIGN", (0, 0), (-1, -1), "MIDDLE")]))
            return box
        picture = PilImage.open(path).convert("RGB")
        if img.get("crop"):
            # A cut-out is enlarged smoothly, so that it does not print blocky.
            picture = picture.crop(tuple(int(v) for v in img.get("crop").split(",")))
            picture = picture.resize((picture.width * 3, picture.height * 3), PilImage.LANCZOS)
        data = io.BytesIO()
        picture.save(data, "PNG")
        data.seek(0)
        height = width * picture.height / picture.width
        return Image(data, width=width, height=height)

    def figure_row(self, images):
        gap = 0.4 * cm
        default_width = (TEXT_WIDTH - gap * (len(images) - 1)) / len(images)
        cells = []
        widths = []
        for img in images:
            width = length(img.get("width")) if img.get("width") else default_width
            cells.append([self.picture(img, width), Spacer(1, 3),
                          Paragraph(escape(img.get("alt", "")), self.styles["caption"])])
            widths.append(width + gap)
        row = Table([cells], colWidths=widths)
        row.setStyle(TableStyle([("VALIGN", (0, 0), (-1, -1), "TOP"),
                                 ("LEFTPADDING", (0, 0), (-1, -1), 0),
                                 ("RIGHTPADDING", (0, 0), (-1, -1), 0)]))
        return [KeepTogether([row]), Spacer(1, 8)]

    def table(self, element):
        rows = []
        for tr in element.iter("tr"):
            rows.append([Paragraph(inline(cell), self.styles["cell"]) for cell in tr])
        columns = len(rows[0])
        table = Table(rows, colWidths=[TEXT_WIDTH / columns] * columns, repeatRows=1)
        table.setStyle(TableStyle([
            ("GRID", (0, 0), (-1, -1), 0.5, FRAME),
            ("BACKGROUND", (0, 0), (-1, 0), colors.HexColor("#f1e4e5")),
            ("FONTNAME", (0, 0), (-1, 0), "Sans-Bold"),
            ("VALIGN", (0, 0), (-1, -1), "TOP")]))
        return [table, Spacer(1, 8)]

    def list(self, element):
        items = []
        for li in element.findall("li"):
            nested = [child for child in li if child.tag in ("ul", "ol", "p")]
            for child in nested:
                li.remove(child)
            flowables = [Paragraph(inline(li), self.styles["body"])] if inline(li).strip() else []
            for child in nested:
                flowables += self.block(child)
            items.append(ListItem(flowables))
        numbered = element.tag == "ol"
        if numbered:
            return [ListFlowable(items, bulletType="1", bulletFormat="%s.", bulletFontName="Sans",
                                 bulletFontSize=10, leftIndent=16)]
        return [ListFlowable(items, bulletType="bullet", start="\u2022", bulletFontName="Sans",
                             bulletFontSize=10, leftIndent=14)]

    def block(self, element):
        if element.tag in ("h1", "h2", "h3"):
            return [Paragraph(inline(element), self.styles[element.tag])]
        if element.tag == "p":
            images = [child for child in element if child.tag == "img"]
            if images and len(images) == len(element) and not inline(element).strip():
                return self.figure_row(images)
            return [Paragraph(inline(element), self.styles["body"])]
        if element.tag in ("ul", "ol"):
            return self.list(element)
        if element.tag == "table":
            return self.table(element)
        raise ValueError(f"the manual's source uses <{element.tag}>, which is not laid out")

    def story(self, meta, body, version):
        s = self.styles
        story = [Spacer(1, 2 * cm), Paragraph(escape(meta["title"][0]), s["title"]),
                 Paragraph(escape(meta["subtitle"][0]), s["subtitle"]),
                 Paragraph(f"User manual \u2014 version {escape(version)}", s["edition"])]
        if "cover" in meta:
            cover = ET.Element("img", alt=meta.get("cover-caption", [""])[0], src=meta["cover"][0])
            story += self.figure_row([cover])
        chapters = [element for element in body if element.tag == "h1"]
        for element in body:
            if element.tag == "h1":
                if element is chapters[0]:
                    story.append(Paragraph("Contents", s["h2"]))
                    story += [Paragraph(f"{number}. {inline(chapter)}", s["contents"])
                              for number, chapter in enumerate(chapters, 1)]
                story.append(PageBreak())
            story += self.block(element)
        return story


def footer(text):
    def draw(canvas, doc):
        canvas.saveState()
        canvas.setFont("Sans", 8)
        canvas.setFillColor(colors.dimgrey)
        canvas.drawString(2 * cm, 1.2 * cm, text)
        canvas.drawRightString(A4[0] - 2 * cm, 1.2 * cm, str(doc.page))
        canvas.restoreState()
    return draw


def write_if_changed(path, data):
    if os.path.isfile(path):
        with open(path, "rb") as existing:
            if existing.read() == data:
                return
    with open(path, "wb") as out:
        out.write(data)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("source")
    parser.add_argument("output")
    parser.add_argument("--version", required=True)
    parser.add_argument("--pictures", action="append", default=[])
    parser.add_argument("--missing")
    args = parser.parse_args()

    with open(args.source, encoding="utf-8") as f:
        text = f.read().replace("{{version}}", args.version)
    converter = markdown.Markdown(extensions=["meta", "tables", "attr_list"])
    body = ET.fromstring(f"<body>{converter.convert(text)}</body>")

    rl_config.invariant = 1  # the same source gives the same bytes
    register_fonts()
    manual = Manual(args.pictures)
    pdf = io.BytesIO()
    title = converter.Meta["title"][0]
    doc = SimpleDocTemplate(pdf, pagesize=A4, leftMargin=2 * cm, rightMargin=2 * cm,
                            topMargin=2 * cm, bottomMargin=2 * cm, title=f"{title} user manual",
                            author="Velmora Imaging", subject=converter.Meta["subtitle"][0])
    doc.build(manual.story(converter.Meta, body, args.version),
              onLaterPages=footer(f"{title} {args.version} \u2014 user manual"))
    write_if_changed(args.output, pdf.getvalue())
    if args.missing:
        write_if_changed(args.missing, "".join(f"{name}\n" for name in manual.missing).encode())
    if manual.missing:
        print(f"manual: placeholders for {', '.join(manual.missing)} (pictures not taken yet)",
              file=sys.stderr)


if __name__ == "__main__":
    main()
