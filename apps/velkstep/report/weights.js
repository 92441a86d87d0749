// What a part weighs: the bytes of its file and of those of all that is in it, each file once.

const WEIGHTS = new Map();

// {bytes, files} of a part with everything below it.
function weight_of(part) {
  if (WEIGHTS.has(part)) return WEIGHTS.get(part);
  const seen = new Set([part]);
  const waiting = [part];
  const weight = {bytes: 0, files: 0};
  while (waiting.length > 0) {
    const {bytes, components} = PARTS[waiting.pop()];
    if (bytes !== null) {
      weight.bytes += bytes;
      ++weight.files;
    }
    for (const use of components) {
      if (seen.has(use.part)) continue;
      seen.add(use.part);
      waiting.push(use.part);
    }
  }
  WEIGHTS.set(part, weight);
  return weight;
}

const weight_text = (part) => {
  const {bytes, files} = weight_of(part);
  return files === 0 ? "" : size_text(bytes);
};
