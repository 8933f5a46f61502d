// From the page's packed shapes to triangles with smooth normals, and to the edges that are seen.

const kSteps = 65535;
const kCrease = Math.cos(35 * Math.PI / 180);  // faces that meet more sharply have an edge between them

/** @param {string} text base64 @returns {ArrayBuffer} */
export function decode(text) {
    const bytes = atob(text);
    const array = new Uint8Array(bytes.length);
    for (let i = 0; i < bytes.length; ++i) array[i] = bytes.charCodeAt(i);
    return array.buffer;
}

/**
 * Three corners a triangle, each with its normal, and two ends an edge, all in the shape's coordinates.
 * @returns {{positions: Float32Array, normals: Float32Array, edges: Float32Array}}
 */
export function unpack(shape) {
    const points = placesOf(shape);
    const buffer = decode(shape.indices);
    const indices = shape.wide ? new Uint32Array(buffer) : new Uint16Array(buffer);
    const normals = faceNormals(points, indices);
    return {
        positions: pick(points, indices),
        normals: cornerNormals(indices, normals, points.length / 3),
        edges: pick(points, sharpEdges(indices, normals, points.length / 3)),
    };
}

function placesOf({low, size, positions}) {
    const steps = new Uint16Array(decode(positions));
    return Float32Array.from(steps, (step, i) => low[i % 3] + step / kSteps * size[i % 3]);
}

function pick(points, indices) {
    const places = new Float32Array(indices.length * 3);
    for (let i = 0; i < indices.length; ++i) {
        for (let axis = 0; axis < 3; ++axis) places[3 * i + axis] = points[3 * indices[i] + axis];
    }
    return places;
}

/** Of each triangle, twice its area long. */
function faceNormals(points, indices) {
    const normals = new Float64Array(indices.length);
    for (let i = 0; i < indices.length; i += 3) {
        const [a, b, c] = [3 * indices[i], 3 * indices[i + 1], 3 * indices[i + 2]];
        const u = [0, 1, 2].map(axis => points[b + axis] - points[a + axis]);
        const v = [0, 1, 2].map(axis => points[c + axis] - points[a + axis]);
        normals[i] = u[1] * v[2] - u[2] * v[1];
        normals[i + 1] = u[2] * v[0] - u[0] * v[2];
        normals[i + 2] = u[0] * v[1] - u[1] * v[0];
    }
    return normals;
}

function cosine(normals, a, b) {
    const lengths = length(normals, a) * length(normals, b);
    if (lengths === 0) return 1;
    return (normals[a] * normals[b] + normals[a + 1] * normals[b + 1] + normals[a + 2] * normals[b + 2]) / lengths;
}

function length(vectors, at) {
    return Math.hypot(vectors[at], vectors[at + 1], vectors[at + 2]);
}

/** The mean of the faces around the corner that turn smoothly into its own, by area. */
function cornerNormals(indices, faces, pointCount) {
    const {starts, around} = facesAround(indices, pointCount);
    const normals = new Float32Array(indices.length * 3);
    for (let i = 0; i < indices.length; ++i) {
        const own = i - i % 3;
        const sum = [0, 0, 0];
        for (let k = starts[indices[i]]; k < starts[indices[i] + 1]; ++k) {
            if (cosine(faces, own, around[k]) < kCrease) continue;
            for (let axis = 0; axis < 3; ++axis) sum[axis] += faces[around[k] + axis];
        }
        const size = Math.hypot(...sum) || 1;
        for (let axis = 0; axis < 3; ++axis) normals[3 * i + axis] = sum[axis] / size;
    }
    return normals;
}

/** The triangles at each point: those of point p are around[starts[p]] and on. */
function facesAround(indices, pointCount) {
    const starts = new Uint32Array(pointCount + 1);
    for (const point of indices) ++starts[point + 1];
    for (let i = 0; i < pointCount; ++i) starts[i + 1] += starts[i];
    const next = starts.slice();
    const around = new Uint32Array(indices.length);
    for (let i = 0; i < indices.length; ++i) around[next[indices[i]]++] = i - i % 3;
    return {starts, around};
}

/** Edges where faces meet sharply, and those of one face only, as pairs of points. */
function sharpEdges(indices, faces, pointCount) {
    const open = new Map();
    const sharp = [];
    for (let i = 0; i < indices.length; ++i) {
        const from = indices[i];
        const to = indices[i % 3 === 2 ? i - 2 : i + 1];
        const key = Math.min(from, to) * pointCount + Math.max(from, to);
        const other = open.get(key);
        if (other === undefined) {
            open.set(key, i - i % 3);
            continue;
        }
        open.delete(key);
        if (Math.abs(cosine(faces, other, i - i % 3)) < kCrease) sharp.push(from, to);
    }
    for (const key of open.keys()) sharp.push(Math.floor(key / pointCount), key % pointCount);
    return sharp;
}
