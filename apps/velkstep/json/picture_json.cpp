// What a picture shows as JSON.
#include "json/documents.h"
#include "json/json_line.h"
#include "run/words.h"

namespace Velkstep {

std::string picture_json(const Kessel::Picture& picture, Kessel::View view,
                         const std::string& input, const std::filesystem::path& out) {
  return json_line({{"format", JSON_FORMAT},
                    {"input", input},
                    {"output", out.string()},
                    {"record", picture.record == 0 ? Json() : Json(picture.record)},
                    {"name", picture.name},
                    {"view", word_for(VIEWS, view)},
                    {"places", picture.places},
                    {"lines", picture.lines},
                    {"left_out", picture.left_out},
                    {"dropped", picture.dropped},
                    {"elsewhere", picture.elsewhere},
                    {"bytes", picture.bytes}});
}

}  // namespace Velkstep
