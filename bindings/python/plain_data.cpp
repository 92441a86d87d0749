#include "plain_data.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Velkstep {

namespace {

namespace py = pybind11;
using py::literals::operator""_a;

/// Version of the shapes, as in the command's JSON.
constexpr int FORMAT = 1;

/// How many types are listed, the most frequent.
constexpr std::size_t MOST_FREQUENT = 10;

/// Text for Python; bytes that are no characters become U+FFFD.
py::str text(std::string_view utf8) {
  PyObject* decoded =
      PyUnicode_DecodeUTF8(utf8.data(), static_cast<Py_ssize_t>(utf8.size()), "replace");
  if (decoded == nullptr) throw py::error_already_set();
  return py::reinterpret_steal<py::str>(decoded);
}

template <class Items, class Convert>
py::list list_of(const Items& items, Convert convert) {
  py::list list;
  for (const auto& item : items) list.append(convert(item));
  return list;
}

py::list texts(const std::vector<std::string>& items) {
  return list_of(items, text);
}

const char* role_name(Kessel::PartRole role) {
  switch (role) {
    case Kessel::PartRole::part:
      return "part";
    case Kessel::PartRole::assembly:
      return "assembly";
    case Kessel::PartRole::assembly_with_bodies:
      return "assembly with bodies";
  }
  return "";
}

py::dict use_dict(const Kessel::PartUse& use) {
  return py::dict("part"_a = use.part, "count"_a = use.count, "closes_cycle"_a = use.closes_cycle);
}

py::dict tree_part_dict(const Kessel::PartInfo& part) {
  py::object record = py::none();
  if (part.record != 0) record = py::int_(part.record);
  py::object file = py::none();
  if (!part.file.empty()) file = text(part.file.string());
  py::object external_file = py::none();
  if (!part.external_file.empty()) external_file = text(part.external_file);
  return py::dict("record"_a = record, "id"_a = text(part.id), "name"_a = text(part.name),
                  "description"_a = text(part.description), "kind"_a = role_name(part.role),
                  "file"_a = file, "external_file"_a = external_file, "total"_a = part.total,
                  "components"_a = list_of(part.components, use_dict),
                  "used_in"_a = list_of(part.used_in, use_dict));
}

py::dict header_dict(const Kessel::Header& header) {
  return py::dict(
      "description"_a = texts(header.description),
      "implementation_level"_a = text(header.implementation_level), "name"_a = text(header.name),
      "time_stamp"_a = text(header.time_stamp), "authors"_a = texts(header.authors),
      "organisations"_a = texts(header.organisations),
      "preprocessor_version"_a = text(header.preprocessor_version),
      "originating_system"_a = text(header.originating_system),
      "authorisation"_a = text(header.authorisation), "schemas"_a = texts(header.schemas));
}

py::list most_frequent(const std::vector<Kessel::TypeCount>& types) {
  py::list list;
  for (std::size_t i = 0; i < std::min(types.size(), MOST_FREQUENT); ++i) {
    list.append(py::dict("type"_a = text(types[i].type), "records"_a = types[i].records));
  }
  return list;
}

py::list units(const std::vector<Kessel::UnitUse>& uses, const char* measured_in) {
  return list_of(uses, [&](const Kessel::UnitUse& use) {
    py::dict unit("name"_a = text(use.name), "contexts"_a = use.contexts);
    unit[measured_in] = use.factor == 0 ? py::object(py::none()) : py::float_(use.factor);
    return unit;
  });
}

py::object number_or_none(std::uint64_t number) {
  return number == 0 ? py::object(py::none()) : py::int_(number);
}

py::list numbers(const std::vector<std::uint64_t>& records) {
  return list_of(records, [](std::uint64_t record) { return py::int_(record); });
}

py::dict parameter_dict(const Kessel::ChangedParameter& parameter) {
  return py::dict("keyword"_a = text(parameter.keyword), "place"_a = parameter.place,
                  "in_a"_a = text(parameter.in_a), "in_b"_a = text(parameter.in_b));
}

py::dict changed_dict(const Kessel::ChangedRecord& record) {
  return py::dict("in_a"_a = number_or_none(record.in_a), "in_b"_a = number_or_none(record.in_b),
                  "parameters"_a = list_of(record.parameters, parameter_dict));
}

py::dict type_dict(const Kessel::TypeDifference& type) {
  return py::dict("type"_a = text(type.type), "only_in_a"_a = numbers(type.only_in_a),
                  "only_in_b"_a = numbers(type.only_in_b),
                  "changed"_a = list_of(type.changed, changed_dict));
}

py::dict product_dict(const Kessel::ProductDifference& product) {
  return py::dict("id"_a = text(product.id), "name"_a = text(product.name),
                  "definition_in_a"_a = number_or_none(product.definition_in_a),
                  "definition_in_b"_a = number_or_none(product.definition_in_b),
                  "types"_a = list_of(product.types, type_dict));
}

py::dict referenced_file_dict(const Kessel::ReferencedFile& file) {
  return py::dict("file"_a = text(file.name), "references"_a = file.references,
                  "is_there"_a = file.is_there);
}

py::dict input_dict(const Kessel::JoinedInput& input) {
  return py::dict("file"_a = text(input.path.string()), "records"_a = input.records);
}

py::object line_or_none(const Kessel::Finding& finding, std::uint64_t number) {
  return finding.line == 0 ? py::object(py::none()) : py::object(py::int_(number));
}

py::dict finding_of_input(const Kessel::Finding& finding) {
  return py::dict("kind"_a = text(std::string(Kessel::name_of(finding.kind))),
                  "severity"_a = finding.severity == Kessel::Severity::error ? "error" : "warning",
                  "sentence"_a = text(finding.sentence),
                  "offset"_a = line_or_none(finding, finding.offset),
                  "line"_a = line_or_none(finding, finding.line),
                  "column"_a = line_or_none(finding, finding.column),
                  "instance"_a = number_or_none(finding.instance), "count"_a = finding.count);
}

py::dict finding_dict(const Kessel::Finding& finding) {
  py::dict dict = finding_of_input(finding);
  dict["file"] = text(finding.file);
  return dict;
}

/// For the input there is no name.
py::dict finding_of_file(const Kessel::Finding& finding) {
  py::dict dict = finding_dict(finding);
  if (finding.file.empty()) dict["file"] = py::none();
  return dict;
}

}  // namespace

py::dict named_part_dict(const Kessel::NamedPart& part) {
  return py::dict("record"_a = part.record, "id"_a = text(part.id), "name"_a = text(part.name),
                  "path"_a = text(part.path));
}

py::dict extract_dict(const std::vector<Kessel::ExtractedFile>& files, const std::string& input,
                      const std::string& output) {
  const auto file_dict = [](const Kessel::ExtractedFile& file) {
    py::dict dict = named_part_dict(file.part);
    dict["file"] = text(file.path.string());
    dict["body"] = file.body == 0 ? py::object(py::none()) : py::object(py::int_(file.body));
    dict["records"] = file.records;
    dict["bytes"] = file.bytes;
    dict["copies"] = list_of(file.copies, [](const auto& copy) { return text(copy.string()); });
    return dict;
  };
  return py::dict("format"_a = FORMAT, "input"_a = text(input), "output"_a = text(output),
                  "files"_a = list_of(files, file_dict));
}

py::dict picture_dict(const Kessel::Picture& picture, const std::string& view,
                      const std::string& input, const std::string& output) {
  const bool has_record = picture.record != 0;
  return py::dict(
      "format"_a = FORMAT, "input"_a = text(input), "output"_a = text(output),
      "record"_a = has_record ? py::object(py::int_(picture.record)) : py::object(py::none()),
      "name"_a = text(picture.name), "view"_a = view, "places"_a = picture.places,
      "lines"_a = picture.lines, "left_out"_a = picture.left_out, "dropped"_a = picture.dropped,
      "elsewhere"_a = picture.elsewhere, "bytes"_a = picture.bytes);
}

namespace {

py::object colour_or_none(std::int32_t colour) {
  return colour == Kessel::NO_COLOUR ? py::object(py::none()) : py::object(py::int_(colour));
}

py::tuple point_tuple(const Kessel::Point3& point) {
  return py::make_tuple(point[0], point[1], point[2]);
}

py::object box_or_none(const Kessel::Box3& box) {
  if (box.is_empty()) return py::none();
  return py::make_tuple(point_tuple(box.low), point_tuple(box.high));
}

py::dict drawn_part_dict(const Kessel::DrawnPart& part) {
  const auto line_dict = [&](const Kessel::DrawnLine& line) {
    return py::dict("record"_a = line.record, "colour"_a = colour_or_none(line.colour),
                    "points"_a = list_of(Kessel::Drawing::points_of(part, line), point_tuple));
  };
  const auto component_dict = [](const Kessel::PlacedComponent& component) {
    return py::dict("part"_a = component.part, "usage"_a = component.usage,
                    "matrix"_a = py::cast(std::vector<double>(component.matrix.rows.begin(),
                                                              component.matrix.rows.end())),
                    "placed"_a = component.is_placed, "colour"_a = colour_or_none(component.colour),
                    "hidden"_a = component.is_hidden, "closes_cycle"_a = component.closes_cycle);
  };
  const auto style_dict = [](const Kessel::PlacedStyle& style) {
    return py::dict("path"_a = py::cast(style.path), "colour"_a = colour_or_none(style.colour),
                    "hidden"_a = style.is_hidden);
  };
  return py::dict("unit"_a = text(part.unit), "unit_metres"_a = part.unit_metres,
                  "box"_a = box_or_none(part.box), "dropped"_a = part.dropped,
                  "lines"_a = list_of(part.lines, line_dict),
                  "components"_a = list_of(part.components, component_dict),
                  "styled"_a = list_of(part.styled, style_dict));
}

}  // namespace

py::dict drawing_dict(const Kessel::Drawing& drawing, const std::string& input) {
  return py::dict("tree"_a = tree_dict(drawing.assembly, input),
                  "parts"_a = list_of(drawing.parts, drawn_part_dict));
}

py::dict overview_dict(const Kessel::Overview& overview, const std::string& input) {
  py::object parts = py::none();
  if (overview.is_drawn) parts = list_of(overview.drawing.parts, drawn_part_dict);
  return py::dict("tree"_a = tree_dict(overview.drawing.assembly, input),
                  "info"_a = info_dict(overview.summary, input),
                  "findings"_a = list_of(overview.findings, finding_of_file), "parts"_a = parts);
}

py::dict join_dict(const Kessel::Joined& joined, const std::string& root,
                   const std::string& output) {
  return py::dict("format"_a = FORMAT, "input"_a = text(root), "output"_a = text(output),
                  "records"_a = joined.records, "bytes"_a = joined.bytes,
                  "inputs"_a = list_of(joined.inputs, input_dict),
                  "findings"_a = list_of(joined.warnings, finding_dict));
}

py::dict check_dict(const std::vector<Kessel::Finding>& findings, const std::string& input) {
  return py::dict("format"_a = FORMAT, "input"_a = text(input),
                  "findings"_a = list_of(findings, finding_of_file));
}

py::dict verify_dict(const Kessel::Verification& verification, const std::string& input,
                     const std::string& outdir) {
  return py::dict("format"_a = FORMAT, "input"_a = text(input), "output"_a = text(outdir),
                  "files"_a = verification.files, "records"_a = verification.records,
                  "findings"_a = list_of(verification.findings, finding_of_file));
}

py::dict shrink_dict(const Kessel::Shrunk& shrunk, const std::vector<Kessel::Finding>& warnings,
                     const std::string& input, const std::string& output) {
  return py::dict("format"_a = FORMAT, "input"_a = text(input), "output"_a = text(output),
                  "records_before"_a = shrunk.records_before,
                  "records_after"_a = shrunk.records_after, "unreachable"_a = shrunk.unreachable,
                  "bytes_before"_a = shrunk.bytes_before, "bytes_after"_a = shrunk.bytes_after,
                  "findings"_a = list_of(warnings, finding_of_input));
}

py::dict diff_dict(const Kessel::Difference& difference, const std::string& a,
                   const std::string& b) {
  return py::dict(
      "format"_a = FORMAT, "a"_a = text(a), "b"_a = text(b), "same"_a = difference.is_same,
      "certain"_a = difference.is_certain, "schemas_in_a"_a = texts(difference.schemas_in_a),
      "schemas_in_b"_a = texts(difference.schemas_in_b), "records_in_a"_a = difference.records_in_a,
      "records_in_b"_a = difference.records_in_b,
      "products"_a = list_of(difference.products, product_dict));
}

py::dict tree_dict(const Kessel::Assembly& assembly, const std::string& input) {
  return py::dict("format"_a = FORMAT, "input"_a = text(input), "depth"_a = assembly.depth,
                  "roots"_a = list_of(assembly.roots, [](std::size_t i) { return py::int_(i); }),
                  "parts"_a = list_of(assembly.parts, tree_part_dict));
}

py::dict info_dict(const Kessel::Summary& summary, const std::string& input) {
  return py::dict(
      "format"_a = FORMAT, "input"_a = text(input), "bytes"_a = summary.bytes,
      "header"_a = header_dict(summary.header), "records"_a = summary.records,
      "types"_a = summary.types.size(), "most_frequent"_a = most_frequent(summary.types),
      "parts"_a = summary.parts, "assemblies"_a = summary.assemblies,
      "assemblies_with_bodies"_a = summary.assemblies_with_bodies, "depth"_a = summary.depth,
      "length_units"_a = units(summary.length_units, "metres"),
      "plane_angle_units"_a = units(summary.plane_angle_units, "radians"),
      "external_files"_a = list_of(summary.references, referenced_file_dict));
}

}  // namespace Velkstep
