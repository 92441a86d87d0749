// Small pictures of parts, drawn for what is in sight only, a few in each frame.

const MOST_COPIES_ON_A_THUMBNAIL = 3000;
const MOST_THUMBNAILS_KEPT = 3000;
const MOST_MILLISECONDS = 8;  // in one frame

const THUMBNAILS = new Map();
let waiting_thumbnails = [];

DARK.addEventListener("change", () => THUMBNAILS.clear());

// An element for a part's picture; empty where nothing of it is drawn. It is filled soon.
function thumbnail(part, width, height) {
  const canvas = element("canvas", "thumbnail");
  canvas.setAttribute("aria-hidden", "true");
  const scale = Math.min(2, devicePixelRatio);
  canvas.width = Math.round(width * scale);
  canvas.height = Math.round(height * scale);
  canvas.style.width = `${width}px`;
  canvas.style.height = `${height}px`;
  canvas.dataset.of = part;
  if (!HAS_LINES[part]) return canvas;
  const kept = THUMBNAILS.get(thumbnail_key(part, canvas));
  if (kept) canvas.getContext("2d").putImageData(kept, 0, 0);
  else {
    if (waiting_thumbnails.length === 0) requestAnimationFrame(draw_waiting_thumbnails);
    waiting_thumbnails.push(canvas);
  }
  return canvas;
}

const thumbnail_key = (part, canvas) => `${part} ${canvas.width} ${canvas.height}`;

function draw_waiting_thumbnails() {
  const end = performance.now() + MOST_MILLISECONDS;
  waiting_thumbnails = waiting_thumbnails.filter((canvas) => canvas.isConnected);
  while (waiting_thumbnails.length > 0 && performance.now() < end) {
    draw_thumbnail(waiting_thumbnails.shift());
  }
  if (waiting_thumbnails.length > 0) requestAnimationFrame(draw_waiting_thumbnails);
}

function draw_thumbnail(canvas) {
  const part = Number(canvas.dataset.of);
  const key = thumbnail_key(part, canvas);
  if (!THUMBNAILS.has(key)) {
    if (THUMBNAILS.size >= MOST_THUMBNAILS_KEPT) THUMBNAILS.delete(THUMBNAILS.keys().next().value);
    THUMBNAILS.set(key, picture_of(part, canvas.width, canvas.height));
  }
  canvas.getContext("2d").putImageData(THUMBNAILS.get(key), 0, 0);
}

// A part seen from the corner, as an image of this size.
function picture_of(part, width, height) {
  const raster = new Raster(width, height);
  const scene = new Scene(part, MOST_COPIES_ON_A_THUMBNAIL);
  const camera = new Camera();
  camera.frame(scene);
  const matrix = camera.matrix(scene.box, width, height, 1.5);
  const look = {near: 0.9, far: 0.9 * FAR_STRENGTH, width: 1, ink: -1};
  paint(scene, matrix, raster, 1, () => look);
  return raster.image;
}
