# Exchange files with assemblies, for tests of the report page.
import re


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


def copies_of(text, name, count, distance):
    """An exchange file with an assembly of so many copies of its product `name`, in rows of ten."""
    flat = re.sub(r"\s+", "", text.split("DATA;", 1)[1])

    def only(pattern, *numbers):
        return re.search(pattern % numbers, flat).group(1)

    product = only(r"#(\d+)=PRODUCT\('%s'", re.escape(name.replace(" ", "")))
    context = only(r"#%s=PRODUCT\([^;]*,\(#(\d+)", product)
    formation = only(r"#(\d+)=PRODUCT_DEFINITION_FORMATION\w*\([^;]*#%s[,)]", product)
    definition = only(r"#(\d+)=PRODUCT_DEFINITION\([^;]*#%s,", formation)
    stage = only(r"#%s=PRODUCT_DEFINITION\([^;]*,#(\d+)\)", definition)
    of_shape = only(r"#(\d+)=PRODUCT_DEFINITION_SHAPE\([^;]*#%s\)", definition)
    shape = only(r"SHAPE_DEFINITION_REPRESENTATION\(#%s,#(\d+)\)", of_shape)
    geometric = only(r"#%s=SHAPE_REPRESENTATION\([^;]*,#(\d+)\);", shape)
    free = 1 + max(int(number) for number in re.findall(r"#(\d+)=", flat))
    records = []

    def add(record, *values):
        records.append("#%d=%s;" % (free + len(records), record % values))
        return free + len(records) - 1

    def axis(x, y):
        point = add("CARTESIAN_POINT('',(%f,%f,0.))", x, y)
        return add("AXIS2_PLACEMENT_3D('',#%d,$,$)", point)

    whole = add("PRODUCT('copies','copies','',(#%s))", context)
    whole = add("PRODUCT_DEFINITION_FORMATION('','',#%d)", whole)
    whole = add("PRODUCT_DEFINITION('','',#%d,#%s)", whole, stage)
    whole_of = add("PRODUCT_DEFINITION_SHAPE('','',#%d)", whole)
    origin = axis(0, 0)
    targets = [axis(i % 10 * distance, i // 10 * distance) for i in range(count)]
    items = ",".join("#%d" % target for target in targets)
    whole_shape = add("SHAPE_REPRESENTATION('',(%s),#%s)", items, geometric)
    add("SHAPE_DEFINITION_REPRESENTATION(#%d,#%d)", whole_of, whole_shape)
    for target in targets:
        usage = add("NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#%d,#%s,$)", whole, definition)
        usage = add("PRODUCT_DEFINITION_SHAPE('','',#%d)", usage)
        way = add("ITEM_DEFINED_TRANSFORMATION('','',#%d,#%d)", origin, target)
        way = add("(REPRESENTATION_RELATIONSHIP('','',#%s,#%d)"
                  "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#%d)"
                  "SHAPE_REPRESENTATION_RELATIONSHIP())", shape, whole_shape, way)
        add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#%d,#%d)", way, usage)
    end = text.rindex("ENDSEC;")
    return text[:end] + "\n".join(records) + "\n" + text[end:]
