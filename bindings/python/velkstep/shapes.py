"""The dictionaries that the functions return; docs/json.md says what the members mean."""

from __future__ import annotations

from typing import TypedDict


class Use(TypedDict):
    """How often one part uses another."""

    part: int
    count: int
    closes_cycle: bool


class Part(TypedDict):
    """One part of a file."""

    record: int | None
    id: str
    name: str
    description: str
    kind: str
    file: str | None
    external_file: str | None
    total: int
    components: list[Use]
    used_in: list[Use]


class Tree(TypedDict):
    """The parts of a file and how they are put together."""

    format: int
    input: str
    depth: int
    roots: list[int]
    parts: list[Part]


class Header(TypedDict):
    """The fields of a file's header."""

    description: list[str]
    implementation_level: str
    name: str
    time_stamp: str
    authors: list[str]
    organisations: list[str]
    preprocessor_version: str
    originating_system: str
    authorisation: str
    schemas: list[str]


class TypeCount(TypedDict):
    """How many records have one type."""

    type: str
    records: int


class LengthUnit(TypedDict):
    """A unit of lengths."""

    name: str
    metres: float | None
    contexts: int


class AngleUnit(TypedDict):
    """A unit of plane angles."""

    name: str
    radians: float | None
    contexts: int


class ReferencedFile(TypedDict):
    """Another file that a file refers to."""

    file: str
    references: int
    is_there: bool


class Info(TypedDict):
    """What a file says about itself, and counts."""

    format: int
    input: str
    bytes: int
    header: Header
    records: int
    types: int
    most_frequent: list[TypeCount]
    parts: int
    assemblies: int
    assemblies_with_bodies: int
    depth: int
    length_units: list[LengthUnit]
    plane_angle_units: list[AngleUnit]
    external_files: list[ReferencedFile]


class ChangedParameter(TypedDict):
    """A parameter that says something else."""

    keyword: str
    place: int
    in_a: str
    in_b: str


class ChangedRecord(TypedDict):
    """Two records that correspond and say different things."""

    in_a: int | None
    in_b: int | None
    parameters: list[ChangedParameter]


class TypeDifference(TypedDict):
    """What differs among the records of one type."""

    type: str
    only_in_a: list[int]
    only_in_b: list[int]
    changed: list[ChangedRecord]


class ProductDifference(TypedDict):
    """What differs in one product."""

    id: str
    name: str
    definition_in_a: int | None
    definition_in_b: int | None
    types: list[TypeDifference]


class Difference(TypedDict):
    """What two files say differently."""

    format: int
    a: str
    b: str
    same: bool
    certain: bool
    schemas_in_a: list[str]
    schemas_in_b: list[str]
    records_in_a: int
    records_in_b: int
    products: list[ProductDifference]


class JoinedInput(TypedDict):
    """A file that was joined with others."""

    file: str
    records: int


class InputFinding(TypedDict):
    """What deserves a look in the input, and where."""

    kind: str
    severity: str
    sentence: str
    offset: int | None
    line: int | None
    column: int | None
    instance: int | None
    count: int


class Finding(InputFinding):
    """The same in one of several files."""

    file: str


class SplitFinding(InputFinding):
    """What is wrong with a split: in one of its files, in its folder ("."), or in the input (None)."""

    file: str | None


class CheckedFinding(InputFinding):
    """What is wrong or unusual in the input (None), or in a file that it refers to, seen from its folder."""

    file: str | None


class Verification(TypedDict):
    """What a split was found to lose, double or change."""

    format: int
    input: str
    output: str
    files: int
    records: int
    findings: list[SplitFinding]


class Checked(TypedDict):
    """What is wrong or unusual in a file."""

    format: int
    input: str
    findings: list[CheckedFinding]


class NamedPart(TypedDict):
    """A part that can be extracted."""

    record: int
    id: str
    name: str
    path: str


class ExtractedFile(NamedPart):
    """A file with a part, or with a body of one."""

    file: str
    body: int | None
    records: int
    bytes: int
    copies: list[str]


class Extracted(TypedDict):
    """What was extracted from a file."""

    format: int
    input: str
    output: str
    files: list[ExtractedFile]


class Picture(TypedDict):
    """What a picture shows."""

    format: int
    input: str
    output: str
    record: int | None
    name: str
    view: str
    places: int
    lines: int
    left_out: int
    dropped: int
    elsewhere: int
    bytes: int


class DrawnLine(TypedDict):
    """An edge as straight pieces."""

    record: int
    colour: int | None
    points: list[tuple[float, float, float]]


class PlacedComponent(TypedDict):
    """One component, placed."""

    part: int
    usage: int
    matrix: list[float]
    placed: bool
    colour: int | None
    hidden: bool
    closes_cycle: bool


class PlacedStyle(TypedDict):
    """What a part says of a component of its components, to which `path` leads."""

    path: list[int]
    colour: int | None
    hidden: bool


class DrawnPart(TypedDict):
    """What is drawn of one part."""

    unit: str
    unit_metres: float
    box: tuple[tuple[float, float, float], tuple[float, float, float]] | None
    dropped: int
    lines: list[DrawnLine]
    components: list[PlacedComponent]
    styled: list[PlacedStyle]


class Drawing(TypedDict):
    """The parts of a file with their lines."""

    tree: Tree
    parts: list[DrawnPart]


class Overview(TypedDict):
    """What one reading of a file tells."""

    tree: Tree
    info: Info
    findings: list[CheckedFinding]
    parts: list[DrawnPart] | None


class Joined(TypedDict):
    """What was joined from which files."""

    format: int
    input: str
    output: str
    records: int
    bytes: int
    inputs: list[JoinedInput]
    findings: list[Finding]


class Shrunk(TypedDict):
    """How much of a file is left."""

    format: int
    input: str
    output: str
    records_before: int
    records_after: int
    unreachable: int
    bytes_before: int
    bytes_after: int
    findings: list[InputFinding]
