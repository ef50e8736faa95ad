#!/usr/bin/python3
"""tabular-figures.py IN OUT FAMILY: a small font whose digits all have the same width.

The text engine cannot switch an OpenType feature on, so the face's own tabular digits are made the
ordinary ones here. Only what stands beside figures is kept; everything else comes from the full face.
"""
import sys

from fontTools import subset
from fontTools.ttLib import TTFont

source, target, family = sys.argv[1:]
font = TTFont(source)

substitutions = {}
table = font["GSUB"].table
for record in table.FeatureList.FeatureRecord:
    if record.FeatureTag == "tnum":
        for index in record.Feature.LookupListIndex:
            for part in table.LookupList.Lookup[index].SubTable:
                part = getattr(part, "ExtSubTable", part)
                substitutions.update(getattr(part, "mapping", {}))
digits = range(ord("0"), ord("9") + 1)
cmap = font.getBestCmap()
try:
    tabular = {code: substitutions[cmap[code]] for code in digits}
except KeyError:
    sys.exit(f"{source} has no tabular digits")
for part in font["cmap"].tables:
    part.cmap.update(tabular)
# In some weights a digit is off by a few units.
width = font["hmtx"][tabular[ord("0")]][0]
for glyph in tabular.values():
    font["hmtx"][glyph] = (width, font["hmtx"][glyph][1])

options = subset.Options(layout_features=[], name_IDs=["*"], notdef_outline=True, glyph_names=True)
subsetter = subset.Subsetter(options)
subsetter.populate(unicodes=[*range(0x20, 0x7F), 0xA0, 0xB7, 0x2013, 0x2014, 0x2026, 0x2212])
subsetter.subset(font)

postscript = family.replace(" ", "")
for record in font["name"].names:
    if record.nameID in (1, 3, 4, 16):
        record.string = str(record).replace("Inter", family, 1)
    elif record.nameID == 6:
        record.string = str(record).replace("Inter", postscript, 1)
top = font["CFF "].cff
top.fontNames = [top.fontNames[0].replace("Inter", postscript, 1)]
font.save(target)
