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


def drawn_parts(count, group=9):
    """An exchange file with so many parts that have lines, `group` of them in each sub-assembly."""
    records = []

    def add(record, *values):
        records.append("#%d=%s;" % (len(records) + 1, record % values))
        return len(records)

    millimetre = add("(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.))")
    radian = add("(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.))")
    context = add("(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#%d,#%d))"
                  "REPRESENTATION_CONTEXT('',''))", millimetre, radian)

    def axis(x, y, z):
        return add("AXIS2_PLACEMENT_3D('',#%d,$,$)",
                   add("CARTESIAN_POINT('',(%.3f,%.3f,%.3f))", x, y, z))

    origin = axis(0, 0, 0)

    def product(name, items):
        definition = add("PRODUCT_DEFINITION('','',#%d,$)", add(
            "PRODUCT_DEFINITION_FORMATION('','',#%d)", add("PRODUCT('%s','%s','',())", name, name)))
        shape = add("PRODUCT_DEFINITION_SHAPE('','',#%d)", definition)
        representation = add("SHAPE_REPRESENTATION('',(%s),#%d)",
                             ",".join("#%d" % item for item in [origin, *items]), context)
        add("SHAPE_DEFINITION_REPRESENTATION(#%d,#%d)", shape, representation)
        return definition, representation

    def part(number):
        size = 10 + number % 7
        curves = [add("CIRCLE('',#%d,%.3f)", axis(0, 0, 3 * i), size - 0.5 * i) for i in range(12)]
        for i in range(12):
            ends = [add("CARTESIAN_POINT('',(%.3f,%.3f,%.3f))", size * (i % 4), i, z)
                    for z in (0, 10, 35)]
            curves.append(add("POLYLINE('',(%s))", ",".join("#%d" % end for end in ends)))
        return product("part %d" % number,
                       [add("GEOMETRIC_CURVE_SET('',(%s))", ",".join("#%d" % c for c in curves))])

    def place(assembly, component, x, y):
        usage = add("PRODUCT_DEFINITION_SHAPE('','',#%d)", add(
            "NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#%d,#%d,$)", assembly[0], component[0]))
        way = add("ITEM_DEFINED_TRANSFORMATION('','',#%d,#%d)", origin, axis(x, y, 0))
        relationship = add("(REPRESENTATION_RELATIONSHIP('','',#%d,#%d)"
                           "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#%d)"
                           "SHAPE_REPRESENTATION_RELATIONSHIP())", component[1], assembly[1], way)
        add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#%d,#%d)", relationship, usage)

    whole = product("whole", [])
    for first in range(0, count, group):
        assembly = product("group %d" % (first // group), [])
        number = first // group
        place(whole, assembly, 60 * (number % 20) * 3, 60 * (number // 20) * 3)
        for i in range(first, min(first + group, count)):
            place(assembly, part(i), 60 * (i % 3), 60 * (i % group // 3))
    return "\n".join([
        "ISO-10303-21;", "HEADER;", "FILE_DESCRIPTION(('test'),'2;1');",
        "FILE_NAME('in.stp','then',('me'),('us'),'','','');",
        "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));", "ENDSEC;", "DATA;", *records, "ENDSEC;",
        "END-ISO-10303-21;", ""])
