// Straight lines as pixels, in the page's own script: it needs no graphics hardware, and looks the
// same everywhere. Where lines cross, the stronger one stays.

class Raster {
  constructor(width, height) {
    this.width = width;
    this.height = height;
    this.image = new ImageData(width, height);
    this.pixels = new Uint32Array(this.image.data.buffer);  // alpha, blue, green, red
  }

  clear() {
    this.pixels.fill(0);
  }

  plot(x, y, strength, ink) {
    if (x < 0 || y < 0 || x >= this.width || y >= this.height) return;
    const at = y * this.width + x;
    const alpha = strength * 255 | 0;
    if (alpha > this.pixels[at] >>> 24) this.pixels[at] = (alpha << 24 | ink) >>> 0;
  }

  // A line of this width whose strength goes from one value to another.
  line(x0, y0, strength0, x1, y1, strength1, width, ink) {
    const dx = x1 - x0, dy = y1 - y0;
    if (Math.abs(dx) >= Math.abs(dy)) {
      if (dx >= 0) this.strip(x0, y0, strength0, x1, y1, strength1, width, ink, false);
      else this.strip(x1, y1, strength1, x0, y0, strength0, width, ink, false);
    } else if (dy >= 0) this.strip(y0, x0, strength0, y1, x1, strength1, width, ink, true);
    else this.strip(y1, x1, strength1, y0, x0, strength0, width, ink, true);
  }

  // The same along one axis, from a0 up to a1, at most as steep as the diagonal. Pixels that it
  // covers in part are as strong as that part.
  strip(a0, b0, strength0, a1, b1, strength1, width, ink, swapped) {
    const slope = (b1 - b0) / (a1 - a0), fading = (strength1 - strength0) / (a1 - a0);
    const along = swapped ? this.height : this.width;
    const across = swapped ? this.width : this.height;
    const step_along = swapped ? this.width : 1, step_across = swapped ? 1 : this.width;
    const first = Math.max(0, Math.ceil(a0 - 0.5)), last = Math.min(along, Math.ceil(a1 - 0.5));
    if (!(first < last)) return;
    const half = width / 2;
    let b = b0 + slope * (first + 0.5 - a0), strength = strength0 + fading * (first + 0.5 - a0);
    if (Math.max(b, b + slope * (last - first)) < -width ||
        Math.min(b, b + slope * (last - first)) > across + width) return;
    for (let a = first; a < last; ++a, b += slope, strength += fading) {
      const low = b - half, high = b + half;
      for (let c = Math.max(0, Math.floor(low)); c < high && c < across; ++c) {
        const covered = Math.min(c + 1, high) - Math.max(c, low);
        if (covered <= 0) continue;
        const alpha = covered >= 1 ? strength * 255 | 0 : covered * strength * 255 | 0;
        const at = a * step_along + c * step_across;
        if (alpha > this.pixels[at] >>> 24) this.pixels[at] = (alpha << 24 | ink) >>> 0;
      }
    }
  }
}
