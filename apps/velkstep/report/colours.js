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

// How much light comes from a colour, from 0 to 1 (the relative luminance of WCAG 2).
function luminance_of(channels) {
  const [red, green, blue] = channels.map((channel) =>
    (channel <= 10 ? channel / 3294.6 : ((channel / 255 + 0.055) / 1.055) ** 2.4));
  return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
}

// How far two colours are apart for one who reads, from 1 to 21.
function contrast_of(a, b) {
  const [dark, light] = [luminance_of(a), luminance_of(b)].sort((x, y) => x - y);
  return (light + 0.05) / (dark + 0.05);
}

// Black or white, whichever is easier to read on a colour: at least 4.5 of contrast.
const text_colour_on = (channels) =>
  (contrast_of(channels, [0, 0, 0]) >= contrast_of(channels, [255, 255, 255]) ? "#000000" : "#ffffff");

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
