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


class DrawnFile:
    """An exchange file of products with lines, placed in each other. Lengths are millimetres."""

    def __init__(self):
        self.records = []
        millimetre = self.add("(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.))")
        radian = self.add("(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.))")
        self.context = self.add(
            "(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#%d,#%d))"
            "REPRESENTATION_CONTEXT('',''))", millimetre, radian)
        self.origin = self.axis(0, 0, 0)

    def add(self, record, *values):
        self.records.append("#%d=%s;" % (len(self.records) + 1, record % values))
        return len(self.records)

    def point(self, x, y, z):
        return self.add("CARTESIAN_POINT('',(%.3f,%.3f,%.3f))", x, y, z)

    def axis(self, x, y, z):
        return self.add("AXIS2_PLACEMENT_3D('',#%d,$,$)", self.point(x, y, z))

    def polyline(self, *points):
        ends = [self.point(*point) for point in points]
        return self.add("POLYLINE('',(%s))", ",".join("#%d" % end for end in ends))

    def product(self, name, curves=()):
        """Returns its definition and its representation."""
        items = [self.origin]
        if curves:
            items.append(self.add("GEOMETRIC_CURVE_SET('',(%s))",
                                  ",".join("#%d" % curve for curve in curves)))
        definition = self.add("PRODUCT_DEFINITION('','',#%d,$)", self.add(
            "PRODUCT_DEFINITION_FORMATION('','',#%d)",
            self.add("PRODUCT('%s','%s','',())", name, name)))
        shape = self.add("PRODUCT_DEFINITION_SHAPE('','',#%d)", definition)
        representation = self.add("SHAPE_REPRESENTATION('',(%s),#%d)",
                                  ",".join("#%d" % item for item in items), self.context)
        self.add("SHAPE_DEFINITION_REPRESENTATION(#%d,#%d)", shape, representation)
        return definition, representation

    def place(self, assembly, component, x, y):
        """Returns the record that styles of this place name."""
        usage = self.add("PRODUCT_DEFINITION_SHAPE('','',#%d)", self.add(
            "NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#%d,#%d,$)", assembly[0], component[0]))
        way = self.add("ITEM_DEFINED_TRANSFORMATION('','',#%d,#%d)", self.origin,
                       self.axis(x, y, 0))
        relationship = self.add(
            "(REPRESENTATION_RELATIONSHIP('','',#%d,#%d)"
            "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#%d)"
            "SHAPE_REPRESENTATION_RELATIONSHIP())", component[1], assembly[1], way)
        return self.add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#%d,#%d)", relationship, usage)

    def colour(self, part, red, green, blue, *places):
        """Colours a part at the end of these places. Returns the styled item."""
        style = self.add("PRESENTATION_STYLE_ASSIGNMENT((#%d))", self.add(
            "CURVE_STYLE('',$,$,#%d)", self.add("COLOUR_RGB('',%.1f,%.1f,%.1f)", red, green, blue)))
        item = self.add("STYLED_ITEM('',(),#%d)", part[1])
        return self.add("CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(#%d),#%d,#%d,(%s))", style,
                        part[1], item, ",".join("#%d" % place for place in places))

    def text(self):
        return "\n".join([
            "ISO-10303-21;", "HEADER;", "FILE_DESCRIPTION(('test'),'2;1');",
            "FILE_NAME('in.stp','then',('me'),('us'),'','','');",
            "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));", "ENDSEC;", "DATA;", *self.records, "ENDSEC;",
            "END-ISO-10303-21;", ""])


def drawn_parts(count, group=9):
    """An exchange file with so many parts that have lines, `group` of them in each sub-assembly."""
    file = DrawnFile()

    def part(number):
        size = 10 + number % 7
        curves = [file.add("CIRCLE('',#%d,%.3f)", file.axis(0, 0, 3 * i), size - 0.5 * i)
                  for i in range(12)]
        curves += [file.polyline(*((size * (i % 4), i, z) for z in (0, 10, 35)))
                   for i in range(12)]
        return file.product("part %d" % number, curves)

    whole = file.product("whole")
    for first in range(0, count, group):
        number = first // group
        assembly = file.product("group %d" % number)
        file.place(whole, assembly, 60 * (number % 20) * 3, 60 * (number // 20) * 3)
        for i in range(first, min(first + group, count)):
            file.place(assembly, part(i), 60 * (i % 3), 60 * (i % group // 3))
    return file.text()


def styled_places():
    """"one" twice in "two", which is three times in "three". Every first "one" is green; what is in
    the first "two" is red; the second "one" of the second "two" is blue, that of the third hidden."""
    file = DrawnFile()
    three, two = file.product("three"), file.product("two")
    one = file.product("one", [file.polyline((0, 0, 0), (10, 0, 0), (10, 10, 0), (0, 0, 0))])
    ones = [file.place(two, one, 15 * i, 0) for i in range(2)]
    twos = [file.place(three, two, 0, 20 * i) for i in range(3)]
    file.colour(one, 0, 1, 0, ones[0])
    file.colour(two, 1, 0, 0, twos[0])
    file.colour(one, 0, 0, 1, twos[1], ones[1])
    file.add("INVISIBILITY((#%d))", file.colour(one, 1, 1, 0, twos[2], ones[1]))
    return file.text()
