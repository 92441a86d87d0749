"""tree and info: the same as the command prints."""

import json
import os
import subprocess

import pytest
import velkstep
from conftest import LONE_PART

COMMAND = os.environ.get("VELKSTEP_COMMAND")
needs_command = pytest.mark.skipif(not COMMAND, reason="the command line is not built")


def printed(*arguments):
    return json.loads(subprocess.run([COMMAND, *arguments], check=True, capture_output=True).stdout)


@needs_command
@pytest.mark.parametrize("names", ["record", "product", "product-unicode"])
def test_tree_is_what_the_command_prints(lamp, names):
    expected = printed("tree", "--json", f"--names={names}", str(lamp))
    assert velkstep.tree(lamp, names) == expected
    assert len(expected["parts"]) == 14


@needs_command
def test_info_is_what_the_command_prints(lamp):
    assert velkstep.info(lamp) == printed("info", "--json", str(lamp))


@needs_command
def test_check_is_what_the_command_prints(lamp, write):
    bad = write("bad.stp", LONE_PART + "#90=A(#91);\n")
    for path, status in ((lamp, 0), (bad, 4), ("missing.stp", 1)):
        shown = subprocess.run([COMMAND, "check", "--json", path], capture_output=True)
        assert shown.returncode == status
        assert velkstep.check(path) == json.loads(shown.stdout)
    assert len(velkstep.check(bad)["findings"]) == 1
    stages = set()
    velkstep.check(lamp, progress=lambda stage, done, total: stages.add(stage))
    assert stages == {"reading"}


def test_check_of_a_file_that_is_not_there():
    (finding,) = velkstep.check("missing.stp")["findings"]
    assert (finding["kind"], finding["severity"]) == ("unreadable", "error")


def test_the_module_has_its_own_names_only():
    public = {name for name in dir(velkstep) if not name.startswith("_")}
    assert public == set(velkstep.__all__) | {"errors", "shapes"}


def test_tree_of_a_small_file(assembly):
    tree = velkstep.tree(assembly)
    assert [part["record"] for part in tree["parts"]] == [3, 13, 23]
    assert tree["parts"][2] == {
        "record": 23,
        "id": "joint",
        "name": "joint",
        "description": "",
        "kind": "assembly",
        "file": "joint.stp",
        "external_file": None,
        "total": 1,
        "components": [
            {"part": 0, "count": 1, "closes_cycle": False},
            {"part": 1, "count": 1, "closes_cycle": False},
        ],
        "used_in": [],
    }
    assert (tree["format"], tree["depth"], tree["roots"]) == (1, 2, [2])
    assert tree["input"] == str(assembly)


def test_tree_of_a_lone_part_has_a_file(write):
    (part,) = velkstep.tree(write("one.stp", LONE_PART))["parts"]
    assert part["file"] == "lid.stp"


def test_generated_root_has_no_record(write):
    two = LONE_PART + LONE_PART.replace("#1", "#4").replace("#2", "#5").replace("#3", "#6")
    assert [part["record"] for part in velkstep.tree(write("two.stp", two))["parts"]] == [3, 6, None]


def test_numbers_have_64_bits(write):
    large = LONE_PART.replace("#3", f"#{2**64 - 1}")
    (part,) = velkstep.tree(write("large.stp", large))["parts"]
    assert part["record"] == 2**64 - 1


def test_unit_without_a_size_is_none_and_bytes_that_are_no_text_are_replaced(write):
    path = write("odd.stp", LONE_PART)
    path.write_bytes(path.read_bytes().replace(b"FILE_NAME(''", b"FILE_NAME('a\xff'"))
    header = velkstep.info(path)["header"]
    assert header["name"].startswith("a")
    assert len(header["name"]) == 2


def test_results_are_plain_data(lamp):
    for result in (velkstep.tree(lamp), velkstep.info(lamp)):
        assert json.loads(json.dumps(result)) == result


@needs_command
def test_diff_is_what_the_command_prints(lamp, assembly):
    shown = subprocess.run([COMMAND, "diff", "--json", lamp, assembly], capture_output=True)
    assert shown.returncode == 1
    assert velkstep.diff(lamp, assembly) == json.loads(shown.stdout)


def test_diff_of_a_file_with_itself(lamp):
    stages = set()
    difference = velkstep.diff(lamp, lamp, lambda stage, *_: stages.add(stage))
    assert difference["same"] and difference["certain"] and difference["products"] == []
    assert stages == {"reading", "sorting"}


def test_diff_names_the_file_that_cannot_be_read(lamp):
    with pytest.raises(velkstep.InputError) as caught:
        velkstep.diff(lamp, "missing.step")
    assert str(caught.value.path) == "missing.step"


@needs_command
def test_verify_is_what_the_command_prints(lamp, assembly, tmp_path):
    velkstep.split(lamp, tmp_path)
    stages = set()
    whole = velkstep.verify(lamp, tmp_path, lambda stage, *_: stages.add(stage))
    assert whole["findings"] == [] and whole["files"] > 1
    assert stages == {"reading", "sorting"}
    for source, file in ((assembly, "Desk lamp.stp"), ("missing.stp", None)):
        found = velkstep.verify(source, tmp_path)
        assert file in {finding["file"] for finding in found["findings"]}
        shown = subprocess.run(
            [COMMAND, "verify", "--json", source, tmp_path], capture_output=True
        )
        assert shown.returncode == 1
        assert found == json.loads(shown.stdout)


def test_join_of_one_file_says_the_same(lamp, tmp_path):
    out = tmp_path / "one.step"
    joined = velkstep.join(lamp, out)
    assert joined["input"] == str(lamp) and joined["output"] == str(out)
    assert joined["bytes"] == out.stat().st_size
    assert [entry["records"] for entry in joined["inputs"]] == [joined["records"]]
    assert joined["findings"] == []
    assert velkstep.diff(lamp, out)["same"]


def test_join_names_missing_files_and_replaces_only_on_request(write, tmp_path):
    root = write("root.stp", LONE_PART)
    out = write("out.stp", "precious")
    with pytest.raises(velkstep.OutputError):
        velkstep.join(root, out)
    assert velkstep.join(root, out, replace=True)["inputs"][0]["file"] == str(root)


def test_shrink_makes_one_of_what_is_there_twice(write, tmp_path):
    twice = "".join(f"#{i}=COLOUR_RGB('',1.,0.,0.);\n#{i + 1}=A(#{i});\n" for i in (100, 200))
    source = write("in.stp", LONE_PART + twice)
    out = tmp_path / "small.stp"
    shrunk = velkstep.shrink(source, out)
    assert shrunk["records_after"] == shrunk["records_before"] - 1
    assert (shrunk["unreachable"], shrunk["findings"]) == (0, [])
    assert shrunk["bytes_before"] == source.stat().st_size
    assert shrunk["bytes_after"] == out.stat().st_size
    assert velkstep.diff(source, out)["same"]
    with pytest.raises(velkstep.OutputError):
        velkstep.shrink(source, out)
    again = velkstep.shrink(source, out, replace=True, drop_unreachable=True, renumber=True)
    assert again["records_after"] <= shrunk["records_after"]
    joined = velkstep.join(source, out, replace=True, shrink=True)
    assert joined["records"] == shrunk["records_after"]


def test_split_shrinks_lean_files_only(assembly, tmp_path):
    assert velkstep.split(assembly, tmp_path / "lean", assemblies="lean", shrink=True)
    with pytest.raises(ValueError, match="^shrink: the classic style cannot be shrunk$"):
        velkstep.split(assembly, tmp_path / "classic", assemblies="classic", shrink=True)


def test_picture_and_drawing(tmp_path, lamp):
    out = tmp_path / "one.svg"
    picture = velkstep.picture(lamp, out, view="top")
    assert picture["output"] == str(out)
    assert picture["view"] == "top"
    assert picture["bytes"] == out.stat().st_size
    with pytest.raises(velkstep.OutputError):
        velkstep.picture(lamp, out)
    with pytest.raises(velkstep.PartError):
        velkstep.picture(lamp, out, part="no such part", replace=True)
    with pytest.raises(ValueError):
        velkstep.picture(lamp, out, view="left", replace=True)
    drawing = velkstep.drawing(lamp)
    arm = [part["name"] for part in drawing["tree"]["parts"]].index("Arm beam")
    assert drawing["parts"][arm]["box"] == ((0, 0, 0), (240, 12, 20))
    assert len(drawing["parts"][arm]["lines"]) == 12
    assert drawing["parts"][arm]["unit"] == "millimetre"
    assert drawing["tree"] == velkstep.tree(lamp)
    assert len(drawing["parts"]) == len(drawing["tree"]["parts"])


def test_overview_is_all_that_others_tell(lamp, write):
    for path in (lamp, write("bad.stp", LONE_PART + "#90=A(#91);\n")):
        overview = velkstep.overview(path, tolerance=1e-2, names="record")
        drawing = velkstep.drawing(path, tolerance=1e-2, names="record")
        assert overview["tree"] == velkstep.tree(path, "record") == drawing["tree"]
        assert overview["info"] == velkstep.info(path)
        assert overview["findings"] == velkstep.check(path)["findings"]
        assert overview["parts"] == drawing["parts"]
        assert velkstep.overview(path)["parts"] is None


def test_overview_reads_what_is_referred_to_where_asked(lamp):
    root = velkstep.split(lamp, "lamp")[0]
    assert len(velkstep.overview(root)["tree"]["parts"]) == 4
    assert len(velkstep.overview(root, references="follow")["tree"]["parts"]) == 14
