// Colours of lines and areas, made such that they can be seen on the page, be it light or dark.

const DARK = matchMedia("(prefers-color-scheme: dark)");

const channels_of = (colour) => [colour >> 16 & 255, colour >> 8 & 255, colour & 255];

// How bright a colour is to the eye, from 0 to 1.
function brightness_of([red, green, blue]) {
  return Math.sqrt(0.299 * red * red + 0.587 * green * green + 0.114 * blue * blue) / 255;
}

// The colour, moved towards black or white until it stands out from the page.
function readable(colour) {
  const channels = channels_of(colour);
  const brightness = brightness_of(channels);
  const [to, most] = DARK.matches ? [255, Math.max(0, 0.68 - brightness)]
                                  : [0, Math.max(0, brightness - 0.5)];
  const share = DARK.matches ? most / (1.001 - brightness) : most / (brightness + 0.001);
  return channels.map((channel) => Math.round(channel + (to - channel) * share));
}

// What the page's style says for a colour name, as channels.
function style_colour(name) {
  const text = getComputedStyle(document.documentElement).getPropertyValue(name).trim();
  return channels_of(parseInt(text.slice(1), 16));
}

// Channels as a raster takes them: one number without alpha.
const packed = ([red, green, blue]) => blue << 16 | green << 8 | red;

const css_colour = (colour) => `#${colour.toString(16).padStart(6, "0")}`;

// Black or white, whichever is easier to read on a colour.
const text_colour_on = (channels) => (brightness_of(channels) > 0.62 ? "#101418" : "#ffffff");

// All that is drawn with lines is drawn in these. Made anew when the colour scheme changes.
let INKS = null;

function inks() {
  INKS ??= {
    plain: packed(style_colour("--ink")),
    lit: packed(style_colour("--lit")),
    palette: (REPORT.colours ?? []).map((colour) => packed(readable(colour))),
    of: new Map(),
  };
  return INKS;
}

// The ink for 0xRRGGBB.
function ink_of(colour) {
  const known = inks().of;
  if (!known.has(colour)) known.set(colour, packed(readable(colour)));
  return known.get(colour);
}

DARK.addEventListener("change", () => { INKS = null; });
