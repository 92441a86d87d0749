#!/usr/bin/env python3
"""Prints the peak memory of splits of a large assembly in many files: N copies of an exchange file.

    measure_copies.py IN N PROGRAMS

IN has one product at the top, with a shape, and one data section; each copy of its records gets
numbers of its own, and all stand side by side below a new product. PROGRAMS is the folder with
split_once (bin/ of a build folder). The assembly and its parts are in a temporary folder.
"""

import os
import re
import resource
import subprocess
import sys
import tempfile

RECORD = re.compile(rb"#(\d+)\s*=\s*([^;']*(?:'[^']*'[^;']*)*);")
NAME = re.compile(rb"'[^']*'|#(\d+)")


def parameters_of(body):
    """The numbers that the text of a record refers to, in order."""
    return [int(m.group(1)) for m in NAME.finditer(body) if m.group(1)]


def with_offset(data, offset):
    def moved(match):
        number = match.group(1)
        return b"#%d" % (int(number) + offset) if number else match.group(0)

    return NAME.sub(moved, data)


class Original:
    """The file that is copied, and where its top is."""

    def __init__(self, path):
        with open(path, "rb") as file:
            text = file.read()
        begin = text.index(b"DATA;") + len(b"DATA;")
        end = text.rindex(b"ENDSEC;")
        self.head, self.data = text[:begin], text[begin:end]
        records = {int(m.group(1)): m.group(2) for m in RECORD.finditer(self.data)}
        self.last = max(records)
        usages = [b for b in records.values() if b.startswith(b"NEXT_ASSEMBLY_USAGE_OCCURRENCE")]
        assemblies = {parameters_of(body)[0] for body in usages}
        components = {parameters_of(body)[1] for body in usages}
        (self.top,) = assemblies - components
        self.shape = self.only(records, b"PRODUCT_DEFINITION_SHAPE", self.top)
        link = self.only(records, b"SHAPE_DEFINITION_REPRESENTATION", self.shape)
        self.representation = parameters_of(records[link])[1]
        self.representation_context = parameters_of(records[self.representation])[-1]
        formation, self.definition_context = parameters_of(records[self.top])[:2]
        product = parameters_of(records[formation])[0]
        self.product_context = parameters_of(records[product])[0]
        self.context_body = records[self.representation_context]

    @staticmethod
    def only(records, keyword, of):
        (found,) = [
            number
            for number, body in records.items()
            if body.startswith(keyword + b"(") and parameters_of(body)[:1] == [of]
        ]
        return found


class Top:
    """The product above the copies; its records begin with the number `first`."""

    def __init__(self, original, first):
        self.original, self.next, self.text = original, first, []

    def add(self, body):
        number = self.next
        self.next += 1
        self.text.append(b"#%d=%s;\n" % (number, body))
        return number

    def add_placement(self, x):
        point = self.add(b"CARTESIAN_POINT('',(%d.,0.,0.))" % x)
        axis = self.add(b"DIRECTION('',(0.,0.,1.))")
        direction = self.add(b"DIRECTION('',(1.,0.,0.))")
        return self.add(b"AXIS2_PLACEMENT_3D('',#%d,#%d,#%d)" % (point, axis, direction))

    def write(self, copies):
        original = self.original
        product = self.add(b"PRODUCT('copies','copies','',(#%d))" % original.product_context)
        formation = self.add(b"PRODUCT_DEFINITION_FORMATION('','',#%d)" % product)
        definition = self.add(
            b"PRODUCT_DEFINITION('','',#%d,#%d)" % (formation, original.definition_context)
        )
        shape = self.add(b"PRODUCT_DEFINITION_SHAPE('','',#%d)" % definition)
        context = self.add(original.context_body)
        places = [self.add_placement(1000 * copy) for copy in range(copies)]
        origin = self.add_placement(0)
        items = b",".join(b"#%d" % place for place in [origin, *places])
        whole = self.add(b"SHAPE_REPRESENTATION('',(%s),#%d)" % (items, context))
        self.add(b"SHAPE_DEFINITION_REPRESENTATION(#%d,#%d)" % (shape, whole))
        for copy, place in enumerate(places):
            offset = copy * original.last
            usage = self.add(
                b"NEXT_ASSEMBLY_USAGE_OCCURRENCE('%d','%d','',#%d,#%d,$)"
                % (copy, copy, definition, original.top + offset)
            )
            of_usage = self.add(b"PRODUCT_DEFINITION_SHAPE('','',#%d)" % usage)
            moves = self.add(b"ITEM_DEFINED_TRANSFORMATION('','',#%d,#%d)" % (origin, place))
            relation = self.add(
                b"(REPRESENTATION_RELATIONSHIP('','',#%d,#%d)"
                b"REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#%d)"
                b"SHAPE_REPRESENTATION_RELATIONSHIP())"
                % (original.representation + offset, whole, moves)
            )
            self.add(b"CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#%d,#%d)" % (relation, of_usage))
        return b"".join(self.text)


def write_copies(original, copies, path):
    with open(path, "wb") as out:
        out.write(original.head)
        for copy in range(copies):
            out.write(with_offset(original.data, copy * original.last))
        out.write(Top(original, copies * original.last + 1).write(copies))
        out.write(b"ENDSEC;\nEND-ISO-10303-21;\n")


def split(program, form, path, folder):
    """The number of files that were written, and the peak memory of all children in bytes."""
    with tempfile.TemporaryDirectory(dir=folder) as work:
        command = [program, *form, path, os.path.join(work, "parts")]
        files = subprocess.run(command, cwd=work, check=True, stdout=subprocess.PIPE).stdout
    return int(files), 1024 * resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss


def measure(program, path, folder, form):
    """The same in a process of its own, which has no other children."""
    reader, writer = os.pipe()
    child = os.fork()
    if child == 0:
        files, peak = split(program, form, path, folder)
        os.write(writer, b"%d %d" % (files, peak))
        os._exit(0)
    os.close(writer)
    os.waitpid(child, 0)
    with os.fdopen(reader) as said:
        return [int(word) for word in said.read().split()]


def main():
    if len(sys.argv) != 4:
        sys.exit("usage: measure_copies.py IN N PROGRAMS")
    program = os.path.join(os.path.abspath(sys.argv[3]), "split_once")
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "copies.stp")
        write_copies(Original(sys.argv[1]), int(sys.argv[2]), path)
        print("| form | MB | files | peak memory in MB | of classic's |")
        print("|---|---:|---:|---:|---:|")
        of_classic = None
        for form in [], ["--nested"], ["--lean"]:
            files, peak = measure(program, path, folder, form)
            of_classic = of_classic or peak
            size = os.path.getsize(path) / 1e6
            name = form[0].lstrip("-") if form else "two arguments"
            print(f"| {name} | {size:.0f} | {files} | {peak / 1e6:.0f} | {peak / of_classic:.2f} |")


if __name__ == "__main__":
    main()
