// From where one looks: along parallel rays, with the z axis upright.

const VIEWS = {iso: [45, 35.264], front: [0, 0], top: [0, 90], right: [90, 0]};  // degrees

const clamped = (value, least, most) => Math.min(most, Math.max(least, value));

class Camera {
  constructor() {
    [this.yaw, this.pitch] = VIEWS.iso;
    this.zoom = 1;      // of the picture that just fits
    this.pan = [0, 0];  // pixels
  }

  turn(right, up) {
    this.yaw = (this.yaw + right) % 360;
    this.pitch = clamped(this.pitch + up, -90, 90);
  }

  // What is at (x, y), seen from the middle, stays there.
  zoom_by(factor, x = 0, y = 0) {
    const zoom = clamped(this.zoom * factor, 0.1, 400);
    const scale = zoom / this.zoom;
    this.zoom = zoom;
    this.pan = [x - (x - this.pan[0]) * scale, y - (y - this.pan[1]) * scale];
  }

  // Rows that take a point to right, down and away.
  axes() {
    const [yaw, pitch] = [this.yaw * Math.PI / 180, this.pitch * Math.PI / 180];
    const [cy, sy, cp, sp] = [Math.cos(yaw), Math.sin(yaw), Math.cos(pitch), Math.sin(pitch)];
    return [[cy, sy, 0], [sy * sp, -cy * sp, -cp], [-sy * cp, cy * cp, -sp]];
  }

  // From now on the scene just fits as it is seen now: its scale stays the same while it turns.
  frame(scene) {
    const axes = this.axes();
    this.middle = [0, 1, 2].map((i) => (scene.box[i] + scene.box[i + 3]) / 2);
    this.low = [];
    this.high = [];
    for (const axis of axes.slice(0, 2)) {
      const middle = axis.reduce((sum, part, i) => sum + part * this.middle[i], 0);
      const [least, most] = scene.reach(axis);
      this.low.push(least - middle);
      this.high.push(most - middle);
    }
  }

  // The matrix from a scene's coordinates to pixels of a picture and to depth, 0 nearest and 1
  // farthest, with a margin around the scene.
  matrix(box, width, height, margin) {
    const axes = this.axes();
    const size = [0, 1].map((i) => Math.max(1e-9, this.high[i] - this.low[i]));
    const room = [Math.max(1, width - 2 * margin), Math.max(1, height - 2 * margin)];
    const scale = Math.min(room[0] / size[0], room[1] / size[1]) * this.zoom;
    const deep = Math.max(1e-9, axes[2].reduce((sum, part, i) =>
      sum + Math.abs(part) * (box[i + 3] - box[i]), 0));
    const factors = [scale, scale, 1 / deep];
    const at = [width / 2 + this.pan[0] - scale * (this.low[0] + this.high[0]) / 2,
                height / 2 + this.pan[1] - scale * (this.low[1] + this.high[1]) / 2, 0.5];
    return Float64Array.from(axes.flatMap((axis, row) => [
      ...axis.map((part) => part * factors[row]),
      at[row] - factors[row] * axis.reduce((sum, part, i) => sum + part * this.middle[i], 0),
    ]));
  }
}
