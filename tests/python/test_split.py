"""split: what is written, how it is called, and which arguments are taken."""

import inspect
import json
import os
import pathlib
from pathlib import Path

import pytest
import velkstep
from conftest import LONE_PART


TWO_PARTS = (
    "#1=PRODUCT('a','a','',());\n#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
    "#3=PRODUCT_DEFINITION('','',#2,$);\n"
    "#4=PRODUCT('b','b','',());\n#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
    "#6=PRODUCT_DEFINITION('','',#5,$);\n"
    "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#3,#6,$);\n"
)


def data_of(path):
    return Path(path).read_text().split("DATA;\n", 1)[1]


def test_returns_the_paths_of_the_files_the_roots_first(assembly):
    files = velkstep.split(assembly, "out")
    assert files == [Path("out/joint.stp"), Path("out/bolt.stp"), Path("out/nut.stp")]
    assert all(isinstance(file, pathlib.Path) for file in files)
    assert sorted(Path("out").iterdir()) == sorted([*files, Path("out/velkstep-split.json")])
    assert Path("roots.txt").read_text() == "joint.stp\n"
    begin, records = data_of("out/bolt.stp").split("\n", 1)
    assert begin.startswith("/* velkstep split ")
    assert records == (
        "/*1*/#1=PRODUCT('bolt','bolt','',());\n"
        "/*2*/#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
        "/*3*/#3=PRODUCT_DEFINITION('design','',#2,$);\n"
        "ENDSEC;\nEND-ISO-10303-21;\n"
    )


def test_names_after_records(assembly):
    files = velkstep.split(assembly, "out", names="record")
    assert files == [
        Path("out/#21_part.stp"),
        Path("out/#1_part.stp"),
        Path("out/#11_part.stp"),
    ]


def test_styles_of_assemblies_differ_as_those_of_the_command_do(lamp):
    files = {
        style: velkstep.split(lamp, style, assemblies=style)
        for style in ("classic", "lean", "nested")
    }
    # Lean, sub-assemblies stand in the root's file.
    assert {style: len(paths) for style, paths in files.items()} == {
        "classic": 14,
        "lean": 10,
        "nested": 14,
    }
    roots = {style: paths[0].stat().st_size for style, paths in files.items()}
    assert velkstep.split(lamp, "default")[0].stat().st_size == roots["nested"]
    assert roots["nested"] < roots["lean"]


def test_classic_is_what_hosts_get(assembly):
    assert velkstep.CLASSIC == {"assemblies": "classic", "names": "record", "reading": "classic"}
    files = velkstep.split(assembly, "out", **velkstep.CLASSIC)
    assert files == [
        Path("out/#21_part.stp"),
        Path("out/#1_part.stp"),
        Path("out/#11_part.stp"),
    ]
    assert "FILE_NAME('out/#1_part.stp'," in files[1].read_text()
    assert data_of(files[1]) == (
        "#3=PRODUCT('bolt','bolt','',());\n"
        "#2=PRODUCT_DEFINITION_FORMATION('','',#3);\n"
        "#1=PRODUCT_DEFINITION('design','',#2,$);\n"
        "ENDSEC;\nEND-ISO-10303-21;\n"
    )


def test_readings(write):
    # To the classic reading, a ";" ends a record wherever it stands.
    path = write("in.stp", TWO_PARTS.replace("'a','a'", "'a;b','a'"))
    whole = velkstep.split(path, "whole", assemblies="classic")
    cut = velkstep.split(path, "cut", assemblies="classic", reading="classic")
    assert "PRODUCT('a;b','a','',())" in whole[0].read_text()
    assert not any("PRODUCT('a;b','a','',())" in file.read_text() for file in cut)
    with pytest.raises(ValueError, match="^reading: 'classic' needs assemblies='classic'$"):
        velkstep.split(path, "out", reading="classic")
    assert not Path("out").exists()


def test_paths_are_strings_bytes_or_path_like(assembly):
    class Place:
        def __init__(self, path):
            self.path = path

        def __fspath__(self):
            return self.path

    expected = [Path("a/joint.stp"), Path("a/bolt.stp"), Path("a/nut.stp")]
    assert velkstep.split(str(assembly), "a") == expected
    assert velkstep.split(Place(str(assembly)), Place("b"))[0] == Path("b/joint.stp")
    assert velkstep.split(os.fsencode(assembly), Path("c"))[0] == Path("c/joint.stp")


def test_unicode_in_paths_and_names(write):
    write(
        "支架.stp",
        LONE_PART.replace("'lid','lid'", r"'T\X2\00FC\X0\r','T\X2\00FC\X0\r'")
        + "#4=PRODUCT('b','b','',());\n#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
        "#6=PRODUCT_DEFINITION('','',#5,$);\n"
        "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#3,#6,$);\n",
    )
    assert velkstep.split("支架.stp", "Grüße", names="product-unicode") == [
        Path("Grüße/Tür.stp"),
        Path("Grüße/b.stp"),
    ]
    assert Path("Grüße/Tür.stp").exists()


def test_one_part_is_copied(write, capfd):
    one = write("one.stp", LONE_PART)
    assert velkstep.split(one, "out") == [Path("out/lid.stp")]
    assert Path("out/lid.stp").read_bytes() == one.read_bytes()
    assert capfd.readouterr().err == ""


def test_one_part_is_nothing_to_split_to_hosts(write, capfd):
    assert velkstep.split(write("one.stp", LONE_PART), "out", **velkstep.CLASSIC) == []
    assert capfd.readouterr().err.startswith("Only one part was found in the file !\n")
    assert list(Path("out").iterdir()) == []


def test_the_list_says_what_was_written(assembly):
    files = velkstep.split(assembly, "out")
    split = json.loads(Path("out/velkstep-split.json").read_text())
    assert split["root"] == "joint.stp"
    assert [entry["file"] for entry in split["files"]] == [file.name for file in files]
    assert [entry["bytes"] for entry in split["files"]] == [file.stat().st_size for file in files]
    velkstep.join("out", "one.stp")
    assert velkstep.diff(assembly, "one.stp")["same"]


def test_signature():
    assert list(inspect.signature(velkstep.split).parameters) == [
        "input", "outdir", "assemblies", "names", "reading", "progress", "shrink", "references",
        "follow_outside",
    ]  # fmt: skip
    defaults = inspect.signature(velkstep.split).parameters
    assert defaults["assemblies"].default == "nested"
    assert defaults["names"].default == "product"
    assert defaults["reading"].default == "standard"
    assert defaults["progress"].default is None


@pytest.mark.parametrize("choice", [{"assemblies": "Lean"}, {"names": ""}, {"reading": "no"}])
def test_unknown_styles_are_value_errors(assembly, choice):
    ((name, word),) = choice.items()
    with pytest.raises(ValueError, match=f"^{name}: there is no style '{word}'; there are '"):
        velkstep.split(assembly, "out", **choice)
    assert not Path("out").exists()


@pytest.mark.parametrize("path", [None, 7, ["in.stp"]])
def test_what_is_no_path_is_a_type_error(path):
    with pytest.raises(TypeError):
        velkstep.split(path, "out")
