"""What becomes of files that an input refers to."""

from pathlib import Path

import pytest
import velkstep
from conftest import LONE_PART

BOX = (
    "#21=PRODUCT('box','box','',());\n#22=PRODUCT_DEFINITION_FORMATION('','',#21);\n"
    "#23=PRODUCT_DEFINITION('d','',#22,$);\n"
    "#24=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#23,#3,$);\n"
    "#31=DOCUMENT_FILE('lid.stp','','',$,'',$);\n"
    "#32=APPLIED_DOCUMENT_REFERENCE(#31,'',(#3));\n"
)


@pytest.fixture
def box(write):
    """A box of a lid, whose shape is in the file beside it."""
    Path("in").mkdir()
    write("in/lid.stp", LONE_PART)
    return write("in/in.stp", BOX + "".join(LONE_PART.splitlines(keepends=True)[:3]))


@pytest.fixture
def box_of_a_lid_elsewhere(box):
    """The same, but the lid's file is in another folder."""
    Path("in/lid.stp").rename("lid.stp")
    Path("in/lid.stp").symlink_to("../lid.stp")
    return box


def test_they_stay_where_they_are(box):
    files = velkstep.split(box, "out")
    assert files == [Path("out/box.stp"), Path("out/lid (2).stp")]
    assert velkstep.split(box, "again", references="keep")[1].name == "lid (2).stp"
    assert "=DOCUMENT_FILE('../in/lid.stp'," in files[1].read_text()


def test_they_are_copied(box):
    files = velkstep.split(box, "out", references="copy")
    assert files == [Path("out/box.stp"), Path("out/lid (2).stp"), Path("out/lid.stp")]
    assert "=DOCUMENT_FILE('lid.stp'," in files[1].read_text()
    assert files[2].read_bytes() == Path("in/lid.stp").read_bytes()


def test_they_are_followed(box):
    files = velkstep.split(box, "out", references="follow")
    assert files == [Path("out/box.stp"), Path("out/lid.stp")]
    assert "DOCUMENT_FILE" not in files[1].read_text()
    assert "SHAPE_REPRESENTATION" in files[1].read_text()
    assert velkstep.verify(box, "out", references="follow")["findings"] == []
    assert velkstep.verify(box, "out")["findings"] != []


def test_a_part_keeps_them_or_has_what_they_say(box):
    Path("out").mkdir()
    velkstep.extract(box, "lid", "out/kept.stp")
    assert "=DOCUMENT_FILE('../in/lid.stp'," in Path("out/kept.stp").read_text()
    velkstep.extract(box, "lid", "out/followed.stp", references="follow")
    assert "SHAPE_REPRESENTATION" in Path("out/followed.stp").read_text()
    velkstep.extract(box, "lid", "out/small.stp", references="follow", shrink=True)
    assert velkstep.diff("out/followed.stp", "out/small.stp")["same"]


def test_a_parts_files_are_copied_beside_it(box):
    Path("out").mkdir()
    [file] = velkstep.extract(box, "lid", "out/lid.stp", references="copy")["files"]
    assert file["file"] == "out/lid.stp" and file["copies"] == ["out/lid (2).stp"]
    assert "=DOCUMENT_FILE('lid (2).stp'," in Path("out/lid.stp").read_text()
    assert Path("out/lid (2).stp").read_bytes() == Path("in/lid.stp").read_bytes()


@pytest.mark.parametrize("references", ["follow", "copy"])
def test_outside_of_the_inputs_folder_only_where_asked(box_of_a_lid_elsewhere, references):
    with pytest.raises(velkstep.InputError, match='folder of the file: "lid.stp"') as caught:
        velkstep.split(box_of_a_lid_elsewhere, "out", references=references)
    assert caught.value.advice == "follow_outside=True reads them."
    assert str(caught.value).endswith(" follow_outside=True reads them.")
    assert not Path("out").exists()
    files = velkstep.split(
        box_of_a_lid_elsewhere, "out", references=references, follow_outside=True
    )
    assert len(files) == (2 if references == "follow" else 3)


def test_a_part_outside_only_where_asked(box_of_a_lid_elsewhere):
    with pytest.raises(velkstep.InputError, match='folder of the file: "lid.stp"'):
        velkstep.extract(box_of_a_lid_elsewhere, "lid", "one.stp", references="follow")
    velkstep.extract(
        box_of_a_lid_elsewhere, "lid", "one.stp", references="follow", follow_outside=True
    )
    assert "SHAPE_REPRESENTATION" in Path("one.stp").read_text()


def test_looking_follows_them_where_asked(lamp):
    root = velkstep.split(lamp, "lamp")[0]
    whole = velkstep.picture(lamp, "whole.svg")
    assert velkstep.picture(root, "kept.svg")["elsewhere"] == 3
    followed = velkstep.picture(root, "followed.svg", references="follow")
    assert (followed["elsewhere"], followed["places"]) == (0, whole["places"])
    assert Path("followed.svg").read_bytes() == Path("whole.svg").read_bytes()
    assert len(velkstep.tree(root)["parts"]) == 4
    assert len(velkstep.tree(root, references="follow")["parts"]) == 14
    assert velkstep.info(root, references="follow")["parts"] == velkstep.info(lamp)["parts"]
    lines = [len(part["lines"]) for part in velkstep.drawing(root, references="follow")["parts"]]
    assert sum(lines) == sum(len(part["lines"]) for part in velkstep.drawing(lamp)["parts"])


def test_checking_follows_them_where_asked(box_of_a_lid_elsewhere):
    Path("lid.stp").write_text(Path("lid.stp").read_text().replace("DATA;", "DATA;;"))
    box = box_of_a_lid_elsewhere
    assert velkstep.check(box)["findings"] == []
    (outside,) = velkstep.check(box, references="follow")["findings"]
    assert (outside["kind"], outside["file"]) == ("target_outside", None)
    everywhere = {"references": "follow", "follow_outside": True}
    (finding,) = velkstep.check(box, **everywhere)["findings"]
    assert (finding["kind"], finding["file"]) == ("empty_statement", "../lid.stp")
    assert velkstep.overview(box, **everywhere)["findings"] == [finding]
    with pytest.raises(ValueError, match="^references: neither 'keep' nor 'follow'$"):
        velkstep.check(box, references="copy")


@pytest.mark.parametrize("look", [velkstep.tree, velkstep.info, velkstep.drawing])
def test_looking_outside_only_where_asked(box_of_a_lid_elsewhere, look):
    with pytest.raises(velkstep.InputError, match='folder of the file: "lid.stp"'):
        look(box_of_a_lid_elsewhere, references="follow")
    assert look(box_of_a_lid_elsewhere, references="follow", follow_outside=True)
    with pytest.raises(ValueError, match="^references: neither 'keep' nor 'follow'$"):
        look(box_of_a_lid_elsewhere, references="copy")


def test_unknown_choices_are_value_errors(box):
    with pytest.raises(ValueError, match="^references: neither 'keep' nor 'follow' nor 'copy'$"):
        velkstep.split(box, "out", references="leave")
    with pytest.raises(ValueError, match="^references: neither 'keep' nor 'follow' nor 'copy'$"):
        velkstep.extract(box, "lid", "one.stp", references="leave")
    with pytest.raises(ValueError, match="^references: neither 'keep' nor 'follow'$"):
        velkstep.tree(box, references="copy")


def test_what_helps_where_a_file_is_missing(box):
    Path("in/lid.stp").unlink()
    with pytest.raises(velkstep.InputError) as caught:
        velkstep.join(box, "out.stp")
    assert caught.value.kind == "missing_target"
    assert caught.value.advice == "Put them there; allow_missing=True keeps what refers to them."
    with pytest.raises(velkstep.InputError) as caught:
        velkstep.tree(box, references="follow")
    assert caught.value.advice == 'Put them there, or leave them out with references="keep".'
