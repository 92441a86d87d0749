"""Errors of the library as exceptions."""

import errno
import gzip
import pickle
import subprocess
import sys
from pathlib import Path

import pytest
import velkstep

FUNCTIONS = [
    lambda path: velkstep.split(path, "out"),
    lambda path: velkstep.split(path, "out", references="follow"),
    lambda path: velkstep.split(path, "out", **velkstep.CLASSIC),
    velkstep.tree,
    velkstep.info,
    velkstep.drawing,
    lambda path: velkstep.picture(path, "out"),
    lambda path: velkstep.extract(path, "lid", "out"),
    lambda path: velkstep.shrink(path, "out"),
    lambda path: velkstep.join(path, "out"),
    lambda path: velkstep.diff(path, path),
]


@pytest.mark.parametrize("function", FUNCTIONS)
def test_missing_input(function):
    with pytest.raises(velkstep.InputError) as caught:
        function("missing.stp")
    error = caught.value
    assert str(error) == "missing.stp: The file cannot be opened: No such file or directory."
    assert (error.path, error.kind, error.line, error.column, error.record) == (
        Path("missing.stp"), "unreadable", None, None, None,
    )  # fmt: skip
    assert isinstance(error, RuntimeError)
    assert not Path("out").exists()


def test_part_that_is_not_there(assembly):
    for function in (
        lambda: velkstep.extract(assembly, "no such part", "out"),
        lambda: velkstep.picture(assembly, "out", part="no such part"),
    ):
        with pytest.raises(velkstep.PartError) as caught:
            function()
        error = caught.value
        assert str(error) == (
            f'{assembly}: There is no part called "no such part". velkstep.tree lists all parts.'
        )
        assert (error.path, error.candidates) == (assembly, [])
        assert str(pickle.loads(pickle.dumps(error))) == str(error)


def test_which_of_several_files_is_to_blame(write):
    good = write("good.stp", "#1=A();\n")
    Path("bad.stp").write_text("ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n#1=A(\n")
    with pytest.raises(velkstep.InputError) as caught:
        velkstep.diff(good, "bad.stp")
    assert (caught.value.path, caught.value.line) == (Path("bad.stp"), 5)
    assert str(caught.value).startswith("bad.stp:5:1: ")


def test_finding_of_the_whole_file():
    Path("empty.stp").touch()
    with pytest.raises(velkstep.InputError) as caught:
        velkstep.split("empty.stp", "out")
    assert caught.value.kind == "empty_file"
    assert (caught.value.line, caught.value.column) == (None, None)
    assert caught.value.sentence == "The file is empty."
    assert str(caught.value) == "empty.stp: The file is empty."
    assert not Path("out").exists()


def test_compressed_input_is_not_read(assembly):
    Path("joint.stp.gz").write_bytes(gzip.compress(assembly.read_bytes()))
    with pytest.raises(velkstep.InputError) as caught:
        velkstep.tree("joint.stp.gz")
    assert caught.value.kind == "compressed"
    assert str(caught.value) == "joint.stp.gz: The file is compressed (gzip); unpack it first."


def test_finding_in_a_line():
    Path("cut.stp").write_text("ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n  #1=A(\n")
    with pytest.raises(velkstep.InputError) as caught:
        velkstep.split("cut.stp", "out")
    error = caught.value
    assert (error.kind, error.line, error.column) == ("unclosed_record", 5, 3)
    assert str(error).startswith("cut.stp:5:3: ")


def test_tree_of_a_file_without_an_end_to_its_header():
    Path("head.stp").write_text("ISO-10303-21;\nHEADER;\n")
    with pytest.raises(velkstep.InputError) as caught:
        velkstep.tree("head.stp")
    sentence = 'The HEADER section is not closed by "ENDSEC;".'
    assert str(caught.value) == f"head.stp:3:1: {sentence}"
    assert (caught.value.kind, caught.value.line) == ("unclosed_section", 3)


@pytest.mark.parametrize("function", [velkstep.tree, velkstep.info])
def test_finding_about_a_number_of_64_bits(function, write):
    largest = "#18446744073709551615"
    with pytest.raises(velkstep.InputError) as caught:
        function(write("twice.stp", f"{largest}=A();\n{largest}=B();\n"))
    assert caught.value.kind == "two_texts_of_a_number"
    assert caught.value.record == 2**64 - 1


def test_output_that_cannot_be_written(assembly):
    Path("out/joint.stp").mkdir(parents=True)
    with pytest.raises(velkstep.OutputError) as caught:
        velkstep.split(assembly, "out")
    error = caught.value
    assert str(error) == "out/joint.stp: cannot be written: Is a directory"
    assert (error.path, error.errno) == (Path("out/joint.stp"), errno.EISDIR)
    assert isinstance(error, RuntimeError)


def test_files_that_are_there_already(assembly):
    files = velkstep.split(assembly, "out")
    texts = [file.read_bytes() for file in files]
    with pytest.raises(velkstep.OutputError) as caught:
        velkstep.split(assembly, "out")
    assert str(caught.value) == (
        "out/joint.stp: cannot be written: File exists; split into a folder of its own"
    )
    assert (caught.value.path, caught.value.errno) == (Path("out/joint.stp"), errno.EEXIST)
    assert [file.read_bytes() for file in files] == texts


def test_file_that_is_there_already(assembly):
    Path("taken").touch()
    for function in (
        lambda **how: velkstep.extract(assembly, "bolt", "taken", **how),
        lambda **how: velkstep.picture(assembly, "taken", **how),
        lambda **how: velkstep.shrink(assembly, "taken", **how),
        lambda **how: velkstep.join(assembly, "taken", **how),
    ):
        with pytest.raises(velkstep.OutputError) as caught:
            function()
        error = caught.value
        assert error.advice == "replace=True replaces it"
        assert str(error) == "taken: cannot be written: File exists; replace=True replaces it"
        assert str(pickle.loads(pickle.dumps(error))) == str(error)
        function(replace=True)


def test_output_that_is_the_input(assembly):
    Path("in.stp").write_bytes(assembly.read_bytes())
    with pytest.raises(velkstep.OutputError) as caught:
        velkstep.shrink("in.stp", "in.stp", replace=True)
    assert caught.value.advice == "it is the input, or a file that it refers to; name another"


def test_choice_that_there_is_not(assembly):
    with pytest.raises(ValueError) as caught:
        velkstep.split(assembly, "out", names="products")
    assert str(caught.value) == (
        "names: there is no style 'products'; there are 'record', 'product' and 'product-unicode'"
    )
    assert not Path("out").exists()


def test_folder_that_cannot_be_made(assembly):
    Path("plain").touch()
    with pytest.raises(velkstep.OutputError) as caught:
        velkstep.split(assembly, "plain/out")
    assert str(caught.value) == "plain/out: cannot be written: Not a directory"
    assert (caught.value.path, caught.value.errno) == (Path("plain/out"), errno.ENOTDIR)


def test_output_folder_that_is_not_utf8(assembly):
    with pytest.raises(ValueError, match="^a path is not UTF-8$"):
        velkstep.split(assembly, b"\xff", **velkstep.CLASSIC)


def test_errors_come_out_of_other_processes_whole():
    for error in (
        velkstep.InputError("Bad.", Path("a.stp"), "binary", 3, 4),
        velkstep.OutputError("b.stp: bad", Path("b.stp"), errno.ENOSPC),
    ):
        copy = pickle.loads(pickle.dumps(error))
        assert type(copy) is type(error)
        assert str(copy) == str(error)
        assert vars(copy) == vars(error)


def test_too_little_memory():
    records = "".join(f"#{i}=A(#{i + 1});\n" for i in range(1, 1_000_000))
    Path("large.stp").write_text(
        f"ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n{records}ENDSEC;\nEND-ISO-10303-21;\n"
    )
    program = (
        "import resource, velkstep\n"
        "used = int(open('/proc/self/statm').read().split()[0]) * resource.getpagesize()\n"
        "resource.setrlimit(resource.RLIMIT_AS, (used + (8 << 20), resource.RLIM_INFINITY))\n"
        "try:\n    velkstep.split('large.stp', 'out')\n"
        "except MemoryError:\n    print('MemoryError')\n"
    )
    run = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True)
    assert run.stdout == "MemoryError\n", run.stderr
