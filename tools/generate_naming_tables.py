#!/usr/bin/env python3
"""Writes the tables behind file names: src/naming/unicode_tables.inc and src/naming/ascii_table.inc.

Reads the Unicode character database (Debian's package unicode-data).

    tools/generate_naming_tables.py /usr/share/unicode src/naming
"""
import pathlib
import sys

# What the database does not decompose, and what looks best as something else.
ASCII_FORMS = {
    "Æ": "AE", "æ": "ae", "Œ": "OE", "œ": "oe", "Ø": "O", "ø": "o", "ß": "ss", "ẞ": "SS",
    "Đ": "D", "đ": "d", "Ð": "D", "ð": "d", "Þ": "Th", "þ": "th", "Ł": "L", "ł": "l",
    "Ħ": "H", "ħ": "h", "ı": "i", "Ŧ": "T", "ŧ": "t", "ĸ": "k", "Ŋ": "N", "ŋ": "n",
    "×": "x", "÷": "_", "±": "+-", "°": "deg", "⌀": "D", "µ": "u", "μ": "u", "·": ".",
    "‐": "-", "‑": "-", "‒": "-", "–": "-", "—": "-", "―": "-", "−": "-",
    "‘": "_", "’": "_", "‚": "_", "“": "_", "”": "_", "„": "_", "«": "_", "»": "_",
    "©": "(C)", "®": "(R)", "™": "(TM)", "€": "EUR", "…": "...",
}
ASCII_LAST = 0xFFFF


class Character:
    def __init__(self, fields):
        self.category = fields[2]
        self.combining_class = int(fields[3])
        mapping = fields[5].split()
        self.compatible = bool(mapping) and mapping[0].startswith("<")
        self.mapping = [int(code, 16) for code in mapping if not code.startswith("<")]


def read_characters(folder):
    characters = {}
    with open(folder / "UnicodeData.txt", encoding="ascii") as table:
        for line in table:
            fields = line.split(";")
            characters[int(fields[0], 16)] = Character(fields)
    return characters


def property_lines(path):
    """The fields of each line that holds any, without comments."""
    with open(path, encoding="utf-8") as table:
        for line in table:
            fields = [field.strip() for field in line.split("#")[0].split(";")]
            if len(fields) > 1:
                yield fields


def composition_exclusions(folder):
    excluded = set()
    for fields in property_lines(folder / "DerivedNormalizationProps.txt"):
        if fields[1] == "Full_Composition_Exclusion":
            first, _, last = fields[0].partition("..")
            excluded.update(range(int(first, 16), int(last or first, 16) + 1))
    return excluded


def case_foldings(folder):
    for fields in property_lines(folder / "CaseFolding.txt"):
        if fields[1] in "CF":
            yield int(fields[0], 16), [int(code, 16) for code in fields[2].split()]


def ascii_form(code, characters):
    """What a character looks like in ASCII, or None."""
    if chr(code) in ASCII_FORMS:
        return ASCII_FORMS[chr(code)]
    character = characters.get(code)
    if character is None or not character.mapping:
        return None
    parts = [part if part < 0x80 else ascii_form(part, characters)
             for part in character.mapping
             if part not in characters or characters[part].category != "Mn"]
    if not parts or None in parts:
        return None
    text = "".join(chr(part) if isinstance(part, int) else part for part in parts)
    return text if text.strip() and text.isprintable() else None


def combining_ranges(characters):
    runs = []
    for code in sorted(characters):
        combining_class = characters[code].combining_class
        if combining_class == 0:
            continue
        if runs and runs[-1][1] == code - 1 and runs[-1][2] == combining_class:
            runs[-1][1] = code
        else:
            runs.append([code, code, combining_class])
    return runs


def write(path, source, tables):
    lines = [f"// Made by tools/generate_naming_tables.py from {source}."]
    for declaration, entries in tables:
        lines.append(declaration + " = {")
        row = "   "
        for entry in entries:
            if len(row) + len(entry) + 2 > 100:
                lines.append(row)
                row = "   "
            row += f" {entry},"
        lines += [row, "};"]
    path.write_text("\n".join(lines) + "\n", encoding="ascii")


def numbers(*values):
    return "{" + ",".join(f"0x{value:X}" for value in values) + "}"


def main():
    data, out = map(pathlib.Path, sys.argv[1:])
    characters = read_characters(data)
    canonical = {code: character.mapping for code, character in characters.items()
                 if character.mapping and not character.compatible}
    excluded = composition_exclusions(data)
    write(out / "unicode_tables.inc", "the Unicode character database", [
        ("constexpr Decomposition DECOMPOSITIONS[]",
         [numbers(code, *(mapping + [0])[:2]) for code, mapping in sorted(canonical.items())]),
        ("constexpr Composition COMPOSITIONS[]",
         [numbers(*mapping, code) for code, mapping in
          sorted(canonical.items(), key=lambda item: item[1]) if code not in excluded]),
        ("constexpr CombiningRange COMBINING_RANGES[]",
         [numbers(*run) for run in combining_ranges(characters)]),
        ("constexpr Folding FOLDINGS[]",
         [numbers(code, *(folded + [0, 0])[:3]) for code, folded in case_foldings(data)]),
    ])
    forms = ((code, ascii_form(code, characters)) for code in range(0x80, ASCII_LAST + 1))
    write(out / "ascii_table.inc", "the Unicode character database and a list of its own", [
        ("constexpr AsciiForm ASCII_FORMS[]",
         ['{0x%X,"%s"}' % (code, text.replace("\\", "\\\\").replace('"', '\\"'))
          for code, text in forms if text is not None]),
    ])


main()
