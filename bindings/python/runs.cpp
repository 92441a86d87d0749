#include "runs.h"

#include <pybind11/stl/filesystem.h>

#include <cstdint>
#include <mutex>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>

#include "kessel/errors.h"
#include "kessel/extract.h"
#include "plain_data.h"

namespace Velkstep {

namespace {

namespace py = pybind11;
namespace fs = std::filesystem;

/// Raises `name` of velkstep.errors with these arguments.
template <class... Arguments>
[[noreturn]] void raise(const char* name, const Arguments&... arguments) {
  const py::object type = py::module_::import("velkstep.errors").attr(name);
  const py::object error = type(arguments...);
  PyErr_SetObject(type.ptr(), error.ptr());
  throw py::error_already_set();
}

/// A number, or None for 0.
py::object or_none(std::uint64_t number) {
  return number == 0 ? py::object(py::none()) : py::int_(number);
}

/// Marks the thread as being inside a run.
class Inside {
 public:
  Inside() {
    if (_inside) throw std::runtime_error("velkstep is not to be called from a progress function");
    _inside = true;
  }
  Inside(const Inside&) = delete;
  Inside& operator=(const Inside&) = delete;
  ~Inside() { _inside = false; }

 private:
  static thread_local bool _inside;
};

thread_local bool Inside::_inside = false;

void run_unlocked(const std::function<void()>& run) {
  static std::mutex one_at_a_time;
  const py::gil_scoped_release without_interpreter;
  const std::lock_guard alone(one_at_a_time);
  run();
}

const char* stage_name(Kessel::Stage stage) {
  switch (stage) {
    case Kessel::Stage::reading:
      return "reading";
    case Kessel::Stage::sorting:
      return "sorting";
    case Kessel::Stage::writing:
      return "writing";
  }
  return "";
}

}  // namespace

void run_alone(const fs::path& input, const std::function<void()>& run) {
  const Inside inside;
  try {
    run_unlocked(run);
  } catch (const py::error_already_set&) {
    throw;
  } catch (const Kessel::PartError& error) {
    py::list candidates;
    for (const Kessel::NamedPart& part : error.candidates())
      candidates.append(named_part_dict(part));
    raise("PartError", error.sentence(), candidates, error.path());
  } catch (const Kessel::InputError& error) {
    const Kessel::Finding& finding = error.finding();
    raise("InputError", finding.sentence, error.path(), std::string(Kessel::name_of(finding.kind)),
          or_none(finding.line), or_none(finding.column), or_none(finding.instance));
  } catch (const Kessel::OutputError& error) {
    raise("OutputError", error.what(), error.path(), error.reason().value());
  } catch (const fs::filesystem_error& error) {
    const std::string path = error.path1().string();
    raise("OutputError", path + ": cannot be made: " + error.code().message(), error.path1(),
          error.code().value());
  } catch (const std::system_error&) {
    throw py::value_error("a path is not UTF-8");
  } catch (const std::invalid_argument& error) {
    throw py::value_error(error.what());  // Choices that do not go together.
  } catch (const std::out_of_range& error) {
    raise("InputError", error.what(), input);
  } catch (const std::runtime_error& error) {
    raise("InputError", error.what(), input);
  }
}

std::function<void(const Kessel::Progress&)> progress_for(const py::object& function) {
  return [&function](const Kessel::Progress& progress) {
    const py::gil_scoped_acquire with_interpreter;
    if (PyErr_CheckSignals() != 0) throw py::error_already_set();
    if (!function.is_none()) function(stage_name(progress.stage), progress.done, progress.total);
  };
}

}  // namespace Velkstep
