#include "run/words.h"

namespace Velkstep {

const Choices<Kessel::AssemblyStyle> ASSEMBLY_STYLES = {
    {"classic", Kessel::AssemblyStyle::classic},
    {"lean", Kessel::AssemblyStyle::lean},
    {"nested", Kessel::AssemblyStyle::nested},
};

const Choices<Kessel::Reading> READINGS = {
    {"standard", Kessel::Reading::standard},
    {"classic", Kessel::Reading::classic},
};

const Choices<Kessel::NameStyle> NAME_STYLES = {
    {"record", Kessel::NameStyle::record},
    {"product", Kessel::NameStyle::product},
    {"product-unicode", Kessel::NameStyle::product_unicode},
};

const Choices<Kessel::View> VIEWS = {
    {"iso", Kessel::View::isometric},
    {"front", Kessel::View::front},
    {"top", Kessel::View::top},
    {"right", Kessel::View::right},
};

const Choices<ShowProgress> PROGRESS = {
    {"auto", ShowProgress::automatic},
    {"always", ShowProgress::always},
    {"never", ShowProgress::never},
};

const Choices<ColourChoice> COLOURS = {
    {"auto", ColourChoice::automatic},
    {"always", ColourChoice::always},
    {"never", ColourChoice::never},
};

const Choices<PartsOrder> PARTS_ORDERS = {
    {"file", PartsOrder::file},
    {"name", PartsOrder::name},
    {"quantity", PartsOrder::quantity},
};

std::string word_of(Kessel::AssemblyStyle style) {
  return word_for(ASSEMBLY_STYLES, style);
}

std::string word_of(Kessel::NameStyle style) {
  return word_for(NAME_STYLES, style);
}

}  // namespace Velkstep
