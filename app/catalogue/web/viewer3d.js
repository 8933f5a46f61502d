// The model to turn: parts in step with list and drawing, alone if wanted, with callouts around them.

import {
    Box3, BufferAttribute, InstancedBufferAttribute, InstancedBufferGeometry, LineSegments, Matrix4, Mesh,
    OrthographicCamera, Quaternion, Scene, Sphere, Vector3, WebGLRenderer,
} from 'three';
import {OrbitControls} from 'three/addons/controls/OrbitControls.js';
import {Callouts3d, ringAround, roomInside} from './callouts3d.js';
import {decode, unpack} from './geometry.js';
import {NumberPicture} from './picking.js';
import {makeMaterials} from './shaders.js';

const kPickLayer = 1;
const kKeyTurn = Math.PI / 18;
const kDrag = 4;
const kChosen = [0.96, 0.62, 0.12];
const kPlain = [0.80, 0.82, 0.85];
/** Calm tints for models without colours, one after the other by item. */
const kPalette = [
    [0.72, 0.77, 0.83], [0.80, 0.76, 0.69], [0.70, 0.80, 0.76], [0.82, 0.73, 0.71], [0.74, 0.73, 0.82],
    [0.78, 0.81, 0.68], [0.67, 0.77, 0.82], [0.84, 0.80, 0.76],
];

export class Viewer3d {
    #selection; #pane; #canvas; #renderer; #scene = new Scene(); #camera = new OrthographicCamera();
    #controls; #materials = makeMaterials(); #numbers = new NumberPicture(); #callouts;
    #parts; #groups; #shown = new Map(); #look; #corners = []; #framed = {right: new Vector3(1, 0, 0), up: new Vector3(0, 1, 0)}; #size = {width: 1, height: 1};
    #isIsolated = false; #isWaiting = false; #isMoved = true; #down = null;

    /** Throws where there is no WebGL. */
    constructor(data, selection, pane) {
        this.#selection = selection;
        this.#pane = pane;
        this.#canvas = pane.querySelector('canvas');
        this.#canvas.setAttribute('aria-label', data.title);
        this.#renderer = new WebGLRenderer({canvas: this.#canvas, antialias: true, alpha: true});
        this.#renderer.setPixelRatio(Math.min(window.devicePixelRatio, 2));
        this.#look = new Vector3(...data.scene.look);
        this.#camera.layers.enableAll();
        this.#makeParts(data);
        this.#callouts = new Callouts3d(data.scene.callouts, selection, pane);
        this.#controls = new OrbitControls(this.#camera, this.#canvas);
        this.#controls.addEventListener('change', () => this.#redraw(true));
        this.#listen();
        this.#paint();
        this.#resize();
        this.#lookAtShown();
    }

    #makeParts({scene}) {
        const places = new Float32Array(decode(scene.places));
        this.#parts = scene.parts.map((part, i) => ({
            ...part, number: i + 1, place: matrixAt(places, 12 * i), base: tintOf(part),
        }));
        const ofShape = scene.shapes.map(() => []);
        for (const part of this.#parts) ofShape[part.shape].push(part);
        this.#groups = scene.shapes.map((shape, i) => {
            const group = new ShapeGroup(unpack(shape), ofShape[i], this.#materials);
            this.#scene.add(...group.objects);
            return group;
        });
    }

    #listen() {
        const canvas = this.#canvas;
        new ResizeObserver(() => this.#resize()).observe(this.#canvas);
        this.#selection.addEventListener('change', ({detail}) => this.#onChange(detail));
        canvas.addEventListener('pointermove', event => {
            if (event.buttons === 0) this.#selection.hover(this.#choiceAt(event), 'model');
        });
        canvas.addEventListener('pointerleave', () => this.#selection.hover(null, 'model'));
        canvas.addEventListener('pointerdown', event => { this.#down = {x: event.clientX, y: event.clientY}; });
        canvas.addEventListener('click', event => this.#onClick(event));
        canvas.addEventListener('dblclick', () => this.isolate(this.#selection.chosen !== null));
        canvas.addEventListener('keydown', event => this.#onKey(event));
        const acts = {
            isolate: () => this.isolate(!this.#isIsolated),
            home: () => this.#lookAtShown(),
            callouts: () => this.#toggleCallouts(),
        };
        for (const button of this.#pane.querySelectorAll('[data-act]')) {
            button.addEventListener('click', acts[button.dataset.act]);
        }
    }

    get isIsolated() { return this.#isIsolated; }

    /** Shows the chosen item's parts alone, or all again. */
    isolate(isWanted) {
        const isPossible = this.#parts.some(part => this.#selection.isChosen(part.item));
        this.#isIsolated = isWanted && isPossible;
        this.#paint();
        this.#lookAtShown(true);
    }

    #toggleCallouts() {
        const isOff = this.#pane.classList.toggle('without-callouts');
        this.#pane.querySelector('[data-act=callouts]').setAttribute('aria-pressed', String(!isOff));
    }

    #onChange({what}) {
        if (what === 'chosen' && this.#isIsolated) this.isolate(this.#selection.chosen !== null);
        else this.#paint();
    }

    /** Which parts are shown, and in which tints. */
    #paint() {
        const {chosen} = this.#selection;
        const changed = new Set();
        let isOther = false;
        for (const part of this.#parts) {
            const isShown = !this.#isIsolated || part.item === chosen.item;
            const isChosen = chosen !== null && part.item === chosen.item;
            const tint = this.#tint(part);
            if (part.isShown === isShown && part.isChosen === isChosen && isSame(part.tint, tint)) continue;
            isOther ||= part.isShown !== isShown;
            Object.assign(part, {isShown, isChosen, tint});
            changed.add(this.#groups[part.shape]);
        }
        if (isOther) this.#shown = new Map(this.#parts.filter(part => part.isShown).map(part => [part.instance, part.number]));
        for (const group of changed) group.update();
        const button = this.#pane.querySelector('[data-act=isolate]');
        button.disabled = chosen === null;
        button.setAttribute('aria-pressed', String(this.#isIsolated));
        this.#callouts.light();
        this.#redraw(isOther);
    }

    #tint(part) {
        if (part.item === undefined) return part.base;
        if (this.#selection.isChosen(part.item) && !this.#isIsolated) return kChosen;
        if (this.#selection.isHovered(part.item)) return mix(part.base, kChosen, 0.55);
        return part.base;
    }

    /** From where the drawing looks, or, if wanted, from where one looks now. */
    #lookAtShown(keepsDirection = false) {
        this.#corners = this.#groups.flatMap(group => group.corners());
        const box = new Box3().setFromPoints(this.#corners);
        if (box.isEmpty()) box.set(new Vector3(-1, -1, -1), new Vector3(1, 1, 1));
        const {radius} = box.getBoundingSphere(new Sphere());
        const camera = this.#camera;
        const look = keepsDirection ? camera.getWorldDirection(new Vector3()) : this.#look.clone().normalize();
        camera.position.copy(box.getCenter(this.#controls.target)).addScaledVector(look, -2 * radius);
        camera.near = 0;
        camera.far = 4 * radius;
        camera.zoom = 1;
        this.#controls.update();
        this.#framed = axesOf(camera);
        const extent = this.#extent(this.#framed.right, this.#framed.up);
        const {target} = this.#controls;
        const move = this.#framed.right.clone().multiplyScalar(extent.x - target.dot(this.#framed.right))
            .addScaledVector(this.#framed.up, extent.y - target.dot(this.#framed.up));
        target.add(move);
        camera.position.add(move);
        this.#frame();
        this.#controls.update();
        this.#redraw(true);
    }

    /** All that is shown as large as the room beside the balloons allows. */
    #frame() {
        const {width, height} = this.#size;
        const room = roomInside(width, height);
        const extent = this.#extent(this.#framed.right, this.#framed.up);
        const perPixel = Math.max(extent.width / room.width, extent.height / room.height, 1e-9);
        const camera = this.#camera;
        camera.right = perPixel * width / 2;
        camera.left = -camera.right;
        camera.top = perPixel * height / 2;
        camera.bottom = -camera.top;
        camera.updateProjectionMatrix();
    }

    /** Of what is shown, along two directions: its size, and its middle from the origin. */
    #extent(right, up) {
        const across = rangeOf(this.#corners, right);
        const along = rangeOf(this.#corners, up);
        return {
            width: across.high - across.low, height: along.high - along.low,
            x: (across.high + across.low) / 2, y: (along.high + along.low) / 2,
        };
    }

    #resize() {
        const width = this.#canvas.clientWidth;
        const height = this.#canvas.clientHeight;
        if (width === 0 || height === 0) return;
        this.#size = {width, height};
        this.#renderer.setSize(width, height, false);
        this.#frame();
        this.#redraw(true);
    }

    #redraw(isMoved) {
        this.#isMoved ||= isMoved;
        if (this.#isWaiting) return;
        this.#isWaiting = true;
        requestAnimationFrame(() => this.#draw());
    }

    #draw() {
        this.#isWaiting = false;
        const {width, height} = this.#size;
        if (this.#isMoved) {
            this.#numbers.take(this.#renderer, this.#scene, this.#camera, this.#materials.numbers, kPickLayer, width, height);
        }
        this.#isMoved = false;
        this.#renderer.render(this.#scene, this.#camera);
        this.#arrangeCallouts();
    }

    #arrangeCallouts() {
        const {width, height} = this.#size;
        const project = place => {
            const at = new Vector3(...place).project(this.#camera);
            return {x: (at.x + 1) / 2 * width, y: (1 - at.y) / 2 * height, depth: (at.z + 1) / 2};
        };
        const {right, up} = axesOf(this.#camera);
        const extent = this.#extent(right, up);
        const middle = right.clone().multiplyScalar(extent.x).addScaledVector(up, extent.y);
        const perPixel = (this.#camera.right - this.#camera.left) / this.#camera.zoom / width;
        this.#callouts.arrange({
            project,
            isCovered: ({x, y, depth}, instance) =>
                this.#numbers.isCovered(x / width, y / height, depth, this.#shown.get(instance)),
            isShown: instance => this.#shown.has(instance),
            ring: ringAround({
                middle: project(middle.toArray()), halfWidth: extent.width / 2 / perPixel, halfHeight: extent.height / 2 / perPixel,
            }, width, height),
        });
    }

    #choiceAt(event) {
        const box = this.#canvas.getBoundingClientRect();
        const number = this.#numbers.numberAt((event.clientX - box.x) / box.width, (event.clientY - box.y) / box.height);
        const part = number > 0 ? this.#parts[number - 1] : undefined;
        return part?.item !== undefined ? {item: part.item, part: part.id} : null;
    }

    #onClick(event) {
        if (this.#down && Math.hypot(event.clientX - this.#down.x, event.clientY - this.#down.y) > kDrag) return;
        this.#selection.choose(this.#choiceAt(event), 'model');
    }

    #onKey(event) {
        const turns = {ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1]};
        const zooms = {'+': 1.2, '=': 1.2, '-': 1 / 1.2};
        if (event.key in turns) this.#turn(...turns[event.key]);
        else if (event.key in zooms) this.#zoom(zooms[event.key]);
        else if (event.key === 'Enter') this.isolate(!this.#isIsolated);
        else return;
        event.preventDefault();
    }

    #turn(right, down) {
        const camera = this.#camera;
        const offset = camera.position.clone().sub(this.#controls.target);
        const side = new Vector3().setFromMatrixColumn(camera.matrix, 0);
        offset.applyQuaternion(new Quaternion().setFromAxisAngle(side, down * kKeyTurn));
        offset.applyQuaternion(new Quaternion().setFromAxisAngle(camera.up, right * kKeyTurn));
        camera.position.copy(this.#controls.target).add(offset);
        this.#controls.update();
    }

    #zoom(factor) {
        this.#camera.zoom *= factor;
        this.#camera.updateProjectionMatrix();
        this.#controls.update();
        this.#redraw(true);
    }
}

/** All parts of one shape: geometry once, a place and a tint for each. */
class ShapeGroup {
    #parts; #box; #geometries; #veil;

    constructor({positions, normals, edges}, parts, materials) {
        this.#parts = parts;
        this.#box = new Box3().setFromArray(positions);
        const perPart = {
            place: new InstancedBufferAttribute(new Float32Array(16 * parts.length), 16),
            tint: new InstancedBufferAttribute(new Float32Array(4 * parts.length), 4),
            number: new InstancedBufferAttribute(new Float32Array(parts.length), 1),
        };
        const faces = makeGeometry({position: new BufferAttribute(positions, 3), normal: new BufferAttribute(normals, 3), ...perPart});
        const lines = makeGeometry({position: new BufferAttribute(edges, 3), ...perPart});
        this.#geometries = [faces, lines];
        this.#veil = new Mesh(faces, materials.veil);
        this.objects = [new Mesh(faces, materials.faces), new LineSegments(lines, materials.edges), this.#veil];
        for (const object of this.objects) object.frustumCulled = false;  // places are known to the shaders only
        this.objects[0].layers.enable(kPickLayer);
        this.#veil.renderOrder = 1;
    }

    /** Takes over which parts are shown and their tints. */
    update() {
        const shown = this.#parts.filter(part => part.isShown);
        const {place, tint, number} = this.#geometries[0].attributes;
        shown.forEach((part, i) => {
            part.place.toArray(place.array, 16 * i);
            tint.array.set([...part.tint, part.isChosen ? 1 : 0], 4 * i);
            number.array[i] = part.number;
        });
        for (const attribute of [place, tint, number]) attribute.needsUpdate = true;
        for (const geometry of this.#geometries) geometry.instanceCount = shown.length;
        for (const object of this.objects) object.visible = shown.length > 0;
        this.#veil.visible = shown.some(part => part.isChosen);
    }

    /** Of the boxes of what is shown. */
    corners() {
        const {min, max} = this.#box;
        return this.#parts.filter(part => part.isShown).flatMap(part => [0, 1, 2, 3, 4, 5, 6, 7].map(i =>
            new Vector3(i & 1 ? max.x : min.x, i & 2 ? max.y : min.y, i & 4 ? max.z : min.z).applyMatrix4(part.place)));
    }
}

/** To the right and up on the screen, in the model. */
function axesOf(camera) {
    camera.updateMatrixWorld();
    return {
        right: new Vector3().setFromMatrixColumn(camera.matrixWorld, 0), up: new Vector3().setFromMatrixColumn(camera.matrixWorld, 1),
    };
}

function rangeOf(points, direction) {
    let low = Infinity;
    let high = -Infinity;
    for (const point of points) {
        const at = point.dot(direction);
        low = Math.min(low, at);
        high = Math.max(high, at);
    }
    return low <= high ? {low, high} : {low: -1, high: 1};
}

function makeGeometry(attributes) {
    const geometry = new InstancedBufferGeometry();
    for (const [name, attribute] of Object.entries(attributes)) geometry.setAttribute(name, attribute);
    return geometry;
}

/** Four rows of three: the images of the axes and of the origin. */
function matrixAt(places, at) {
    const matrix = new Matrix4();
    for (let row = 0; row < 4; ++row) {
        for (let i = 0; i < 3; ++i) matrix.elements[4 * row + i] = places[at + 3 * row + i];
    }
    return matrix;
}

function tintOf({color, item}) {
    if (!color) return item === undefined ? kPlain : kPalette[item % kPalette.length];
    const value = parseInt(color.slice(1), 16);
    const tint = [value >> 16, (value >> 8) & 255, value & 255].map(channel => channel / 255);
    // Full white or black would drown the light on it.
    return mix(tint, kPlain, 0.15);
}

function isSame(a, b) {
    return a === b || (a !== undefined && a.every((value, i) => value === b[i]));
}

function mix(a, b, share) {
    return a.map((value, i) => value + (b[i] - value) * share);
}
