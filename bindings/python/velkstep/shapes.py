"""The dictionaries that tree and info return; docs/json.md says what the members mean."""

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
