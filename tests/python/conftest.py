"""What the tests of the Python module share."""

import os
import pathlib

import pytest

PROJECT = pathlib.Path(os.environ["VELKSTEP_PROJECT"])


@pytest.fixture
def assembly():
    """A joint (#23) of a bolt (#3) and a nut (#13), without shapes."""
    return PROJECT / "tests/packaging/host/assembly.stp"


@pytest.fixture
def lamp():
    """The example: nine parts, four sub-assemblies."""
    return PROJECT / "examples/desk-lamp.step"


@pytest.fixture(autouse=True)
def folder(tmp_path, monkeypatch):
    """A working directory of its own for each test."""
    monkeypatch.chdir(tmp_path)
    return tmp_path


@pytest.fixture
def write():
    """Writes an exchange file with these records, and returns its path."""

    def write_records(name, records):
        path = pathlib.Path(name)
        path.write_text(
            "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
            "FILE_NAME('','',(''),(''),'','','');\nFILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\n"
            f"DATA;\n{records}ENDSEC;\nEND-ISO-10303-21;\n"
        )
        return path

    return write_records


LONE_PART = (
    "#1=PRODUCT('lid','lid','',());\n"
    "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
    "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
    "#10=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
    "#11=SHAPE_DEFINITION_REPRESENTATION(#10,#12);\n"
    "#12=SHAPE_REPRESENTATION('',(),$);\n"
)
