"""The functions of the package, and what they take."""

from __future__ import annotations

import os
import pathlib
from typing import Callable, Literal, Optional, TypedDict, Union

from . import _velkstep
from ._advice import FOLLOW, JOIN, NAMES, OTHER_FOLDER, advising, replacing
from .shapes import (
    Checked,
    Difference,
    Drawing,
    Extracted,
    Info,
    Joined,
    Overview,
    Picture,
    Shrunk,
    Tree,
    Verification,
)

StrPath = Union[str, "os.PathLike[str]"]
Assemblies = Literal["classic", "lean", "nested"]
Names = Literal["record", "product", "product-unicode"]
References = Literal["keep", "follow", "copy"]
Follow = Literal["keep", "follow"]
Reading = Literal["standard", "classic"]
View = Literal["iso", "front", "top", "right"]
Stage = Literal["reading", "sorting", "writing"]
Progress = Callable[[Stage, int, int], object]


class Choices(TypedDict):
    """What `split` can be told about its files."""

    assemblies: Assemblies
    names: Names
    reading: Reading


CLASSIC: Choices = {"assemblies": "classic", "names": "record", "reading": "classic"}
"""The choices with which `split(input, outdir, **CLASSIC)` writes the bytes that Kessel::Run writes."""


def split(
    input: StrPath,
    outdir: StrPath,
    assemblies: Assemblies = "nested",
    names: Names = "product",
    reading: Reading = "standard",
    progress: Optional[Progress] = None,
    shrink: bool = False,
    references: References = "keep",
    follow_outside: bool = False,
) -> list[pathlib.Path]:
    """Splits the file `input` into files under `outdir`, and returns their paths, the root's first.

    A file with one part or none is copied; with the assemblies "classic" the list is empty then, and
    nothing is written. The list "velkstep-split.json" of the files goes into `outdir`, too. `outdir` is
    made as needed; where one of the files is there already, in whatever form, nothing is written and
    OutputError is raised.
    "roots.txt" with the root's file name goes into the working directory, over an earlier one.
    Sentences about problems in the data go to standard error. With `shrink`, which needs the style
    lean or nested, records that say the same become one first.

    Other files that `input` refers to are referred to from `outdir` as well ("keep"), are split with
    it as one assembly ("follow"), or copied into `outdir` ("copy"); those outside of its folder are
    followed or copied with `follow_outside` only. The classic style keeps names as they are.

    `progress` is called with the stage and how much of it is done of what total: bytes of the input
    for "reading" and "writing", passes for "sorting". An exception that it raises ends the split
    and comes out of it unchanged, and so does KeyboardInterrupt without any progress function; what
    was written until then is in the files.

    `assemblies` is what an assembly's file holds, `names` what files are called after, `reading` how
    the input is cut into records; "classic" is for the assemblies "classic" only. CLASSIC has all
    three for hosts of Kessel::Run.

    Raises InputError, OutputError, MemoryError; ValueError for a choice that there is not, and with the
    assemblies "classic" for an `outdir` that is not UTF-8.
    """
    with advising({**FOLLOW, **OTHER_FOLDER}):
        return _velkstep.split(
            input, outdir, assemblies, names, reading, progress, shrink, references, follow_outside
        )


def tree(
    input: StrPath,
    names: Names = "product",
    references: Follow = "keep",
    follow_outside: bool = False,
) -> Tree:
    """Reads the product structure, as `velkstep tree --json` prints it. Writes nothing.

    `names` is that of the split that the parts' file names are for. The files that `input` refers to
    are read with it as one on request ("follow"); those outside of its folder with `follow_outside`
    only. Raises InputError, MemoryError, and ValueError for a style that there is not.
    """
    with advising({**FOLLOW}):
        return _velkstep.tree(input, names, references, follow_outside)


def info(input: StrPath, references: Follow = "keep", follow_outside: bool = False) -> Info:
    """Reads header, counts and units, as `velkstep info --json` prints them. Writes nothing.

    `references` and `follow_outside` are those of tree. Raises InputError and MemoryError.
    """
    with advising({**FOLLOW}):
        return _velkstep.info(input, references, follow_outside)


def picture(
    input: StrPath,
    out: StrPath,
    part: str = "",
    view: View = "iso",
    replace: bool = False,
    progress: Optional[Progress] = None,
    references: Follow = "keep",
    follow_outside: bool = False,
) -> Picture:
    """Draws a part of `input`, or all of it, as the SVG file `out`.

    `part` is as that of extract; without it, the whole is drawn. Returns what `velkstep picture --json`
    prints. `out` appears when it is finished; what is there already is replaced only with `replace`.
    Parts whose shapes are in other files have no lines, unless those files are read with `input` as
    one ("follow"); those outside of its folder with `follow_outside` only.

    Raises PartError for a name that no part has, or several; ValueError for a view that there is not;
    InputError, OutputError, MemoryError.
    """
    with advising({**FOLLOW, **NAMES, **replacing(replace)}):
        return _velkstep.picture(
            input, out, part, view, replace, progress, references, follow_outside
        )


def drawing(
    input: StrPath,
    tolerance: float = 1e-3,
    names: Names = "product",
    progress: Optional[Progress] = None,
    references: Follow = "keep",
    follow_outside: bool = False,
) -> Drawing:
    """Reads the edges of all parts as lines, and where components are. Writes nothing.

    `tolerance` says how far a line may be from its curve, as a fraction of its part's box. The member
    "tree" is what tree returns, "parts" has what is drawn of each of its parts, in the same order:
    coordinates in the part's own unit, colours as 0xRRGGBB, matrices as three rows of four numbers.
    `references` and `follow_outside` are those of tree.

    Raises InputError and MemoryError.
    """
    with advising({**FOLLOW}):
        return _velkstep.drawing(input, tolerance, names, progress, references, follow_outside)


def overview(
    input: StrPath,
    tolerance: Optional[float] = None,
    names: Names = "product",
    progress: Optional[Progress] = None,
    references: Follow = "keep",
    follow_outside: bool = False,
) -> Overview:
    """Reads all that there is to tell of a file at once: what tree, info, check and drawing return.

    "tree" and "info" are what those return, "findings" is that of check, and "parts" that of drawing
    with this `tolerance`, or None without one. The other arguments are those of drawing.

    Raises InputError and MemoryError.
    """
    with advising({**FOLLOW}):
        return _velkstep.overview(input, tolerance, names, progress, references, follow_outside)


def extract(
    input: StrPath,
    part: Union[str, list[str]],
    out: StrPath,
    bodies: bool = False,
    names: Names = "product",
    replace: bool = False,
    progress: Optional[Progress] = None,
    shrink: bool = False,
    references: References = "keep",
    follow_outside: bool = False,
) -> Extracted:
    """Writes one part or sub-assembly of `input`, with all below it, as the file `out`.

    `part` is a product's name or id, "#" and the number of its definition, or a path from a top of
    the structure, "Desk lamp/Boom/Arm". For a list of parts, or with `bodies`, which gives a file for
    each body of a part, `out` is a folder, in which files are called as `names` says. Returns what
    `velkstep extract --json` prints. Files appear when all of them are finished; what is there already
    is replaced only with `replace`. `progress` is as that of split. With `shrink`, records of a file
    that say the same become one. Files that these parts refer to stay where they are ("keep"), are
    read with `input` as one ("follow"), or are copied beside `out` ("copy"); those outside of its
    folder are followed and copied with `follow_outside` only.

    Raises PartError for a name that no part has, or several; InputError, OutputError, MemoryError.
    """
    parts = [part] if isinstance(part, str) else list(part)
    is_folder = bodies or not isinstance(part, str)
    with advising({**FOLLOW, **NAMES, **replacing(replace)}):
        return _velkstep.extract(
            input,
            parts,
            out,
            is_folder,
            bodies,
            names,
            replace,
            progress,
            shrink,
            references,
            follow_outside,
        )


def join(
    root: StrPath,
    out: StrPath,
    replace: bool = False,
    follow_outside: bool = False,
    progress: Optional[Progress] = None,
    shrink: bool = False,
    allow_missing: bool = False,
    allow_mixed_schemas: bool = False,
) -> Joined:
    """Joins `root`, or the split in the folder `root`, and the files that it refers to into the file
    `out`.

    Returns what `velkstep join --json` prints. `out` appears when it is finished, or not at all;
    what is there already is replaced only with `replace`. Files outside of the root's folder are
    read only with `follow_outside`. References to files that are not there stay with
    `allow_missing`, and files may obey other schemas than the root with `allow_mixed_schemas`.
    `progress` is called with "reading" and "writing" and bytes of
    the files; it can end the joining as that of split can. With `shrink`, records of the result
    that say the same become one.

    Raises InputError, whose message names all files that are missing; OutputError and MemoryError.
    """
    with advising({**JOIN, **replacing(replace)}):
        return _velkstep.join(
            root, out, replace, follow_outside, progress, shrink, allow_missing, allow_mixed_schemas
        )


def shrink(
    input: StrPath,
    out: StrPath,
    replace: bool = False,
    drop_unreachable: bool = False,
    renumber: bool = False,
    progress: Optional[Progress] = None,
) -> Shrunk:
    """Writes the file `input` to `out` with records that say the same as one.

    Returns what `velkstep shrink --json` prints. `out` appears when it is finished, or not at all;
    what is there already is replaced only with `replace`. With `drop_unreachable`, values, geometry
    and contexts go that nothing leads to. Records keep their numbers unless `renumber` is set.
    `progress` is as for split.

    Raises InputError, OutputError and MemoryError.
    """
    with advising({**replacing(replace)}):
        return _velkstep.shrink(input, out, replace, drop_unreachable, renumber, progress)


def check(
    input: StrPath,
    progress: Optional[Progress] = None,
    references: Follow = "keep",
    follow_outside: bool = False,
) -> Checked:
    """Looks for what is wrong or unusual in the file `input`, as `velkstep check --json` prints it.

    The member "findings" is empty where there is nothing. A file that cannot be read is a finding, too.
    The files that `input` refers to are checked as well on request ("follow"), each by itself; those
    outside of its folder with `follow_outside` only. Writes nothing. `progress` is called with
    "reading" and bytes of the files; it can end the check as that of split can.

    Raises MemoryError, and ValueError for other `references`.
    """
    return _velkstep.check(input, progress, references, follow_outside)


def diff(a: StrPath, b: StrPath, progress: Optional[Progress] = None) -> Difference:
    """Compares what the files `a` and `b` say, as `velkstep diff --json` prints it. Writes nothing.

    The member "same" is the answer. `progress` is called with "reading" and bytes of both files,
    then with "sorting" and steps of the comparison; it can end it as that of split can.

    Raises InputError, whose path is that of the one that is to blame, and MemoryError.
    """
    return _velkstep.diff(a, b, progress)


def verify(
    input: StrPath,
    outdir: StrPath,
    progress: Optional[Progress] = None,
    references: Follow = "keep",
    follow_outside: bool = False,
) -> Verification:
    """Checks that the files of a split in the folder `outdir` hold what the file `input` holds.

    Returns what `velkstep verify --json` prints; the member "findings" is empty where all is as it
    should be. What cannot be read is a finding, too. Writes nothing. `progress` is called with
    "reading" and bytes of the files, then with "sorting" and steps of the comparison; it can end it as
    that of split can. `references` and `follow_outside` are those of the split.

    Raises MemoryError, and OutputError where there is no room for what is followed.
    """
    return _velkstep.verify(input, outdir, progress, references, follow_outside)
