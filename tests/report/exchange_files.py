# Exchange files with assemblies, for tests of the report page.


def exchange_file(names, uses):
    """Products with these names, and usages as pairs (assembly, component) of their positions."""
    records = []
    for i, name in enumerate(names):
        first = 3 * i + 1
        name = encoded(name)
        records.append("#%d=PRODUCT('%s','%s','',());" % (first, name, name))
        records.append("#%d=PRODUCT_DEFINITION_FORMATION('','',#%d);" % (first + 1, first))
        records.append("#%d=PRODUCT_DEFINITION('d','',#%d,$);" % (first + 2, first + 1))
    for i, (assembly, component) in enumerate(uses):
        records.append("#%d=NEXT_ASSEMBLY_USAGE_OCCURRENCE('%d','','',#%d,#%d,$);" %
                       (3 * len(names) + i + 1, i, 3 * assembly + 3, 3 * component + 3))
    return "\n".join([
        "ISO-10303-21;", "HEADER;", "FILE_DESCRIPTION(('test'),'2;1');",
        "FILE_NAME('in.stp','then',('me'),('us'),'','','');",
        "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));", "ENDSEC;", "DATA;", *records, "ENDSEC;",
        "END-ISO-10303-21;", ""])


def encoded(text):
    """A text (up to U+FFFF) as the inside of an exchange string."""
    return "".join(c if " " <= c <= "~" and c not in "'\\" else "\\X2\\%04X\\X0\\" % ord(c)
                   for c in text)
