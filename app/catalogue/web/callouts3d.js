// The balloons around the turning model: a ring that follows the anchors, dimmed where these are covered.

const kGap = 10;         // between balloons, pixels
const kBalloon = 30;
const kAway = 26;        // of the ring from the model
const kBulge = 1.18;     // of an ellipse around what is not one
const kSteps = 128;      // of a turn

export class Callouts3d {
    #selection; #layer; #lines; #callouts;

    /** Those without item name nothing that could be chosen, and are left out. */
    constructor(callouts, selection, pane) {
        this.#selection = selection;
        this.#layer = pane.querySelector('.balloons');
        this.#lines = pane.querySelector('.leaders');
        this.#callouts = callouts.filter(each => each.item !== undefined && each.anchors.length > 0)
            .map(each => this.#make(each));
    }

    #make({item, label, anchors}) {
        const balloon = document.createElement('button');
        balloon.type = 'button';
        balloon.tabIndex = -1;
        balloon.className = 'balloon';
        balloon.dataset.item = String(item);
        balloon.textContent = label;
        balloon.addEventListener('click', () => this.#selection.choose({item, part: null}, 'model'));
        balloon.addEventListener('pointerenter', () => this.#selection.hover({item, part: null}, 'model'));
        balloon.addEventListener('pointerleave', () => this.#selection.hover(null, 'model'));
        this.#layer.append(balloon);
        const leaders = anchors.map(({instance, place}) => {
            const line = document.createElementNS('http://www.w3.org/2000/svg', 'path');
            line.dataset.item = String(item);
            this.#lines.append(line);
            return {line, place, instance, pixel: null, isCovered: false};
        });
        return {item, balloon, leaders, angle: 0};
    }

    /** Shows who is chosen and pointed at. */
    light() {
        for (const {item, balloon, leaders} of this.#callouts) {
            for (const each of [balloon, ...leaders.map(leader => leader.line)]) {
                each.classList.toggle('chosen', this.#selection.isChosen(item));
                each.classList.toggle('hovered', this.#selection.isHovered(item));
            }
        }
    }

    /**
     * @param {object} view `project` gives pixel and depth of a place, `isCovered` tells whether something lies
     *     before that of an instance, `isShown` whether an instance is shown; `ring` is the ellipse around the model, in pixels.
     */
    arrange(view) {
        const shown = this.#callouts.filter(callout => this.#follow(callout, view));
        spread(shown, view.ring);
        for (const callout of shown) this.#place(callout, view.ring);
    }

    /** False when none of its parts is shown. */
    #follow(callout, view) {
        const seen = callout.leaders.filter(leader => {
            const isShown = view.isShown(leader.instance);
            leader.line.style.display = isShown ? '' : 'none';
            if (!isShown) return false;
            leader.pixel = view.project(leader.place);
            leader.isCovered = view.isCovered(leader.pixel, leader.instance);
            return true;
        });
        callout.balloon.hidden = seen.length === 0;
        if (seen.length === 0) return false;
        const {pixel} = seen.find(leader => !leader.isCovered) ?? seen[0];
        const {ring} = view;
        callout.angle = Math.atan2((pixel.y - ring.y) / ring.height, (pixel.x - ring.x) / ring.width);
        callout.balloon.classList.toggle('dim', seen.every(leader => leader.isCovered));
        return true;
    }

    #place({balloon, leaders, angle}, ring) {
        const x = ring.x + Math.cos(angle) * ring.width;
        const y = ring.y + Math.sin(angle) * ring.height;
        balloon.style.transform = `translate(${x.toFixed(1)}px, ${y.toFixed(1)}px) translate(-50%, -50%)`;
        for (const {line, pixel, isCovered} of leaders) {
            if (!pixel) continue;
            const end = `${pixel.x.toFixed(1)} ${pixel.y.toFixed(1)}`;
            line.setAttribute('d', `M${x.toFixed(1)} ${y.toFixed(1)}L${end}m-2.4 0a2.4 2.4 0 1 0 4.8 0a2.4 2.4 0 1 0-4.8 0`);
            line.classList.toggle('dim', isCovered);
        }
    }
}

/**
 * The ellipse on which balloons stand: around the model, whose extent on the screen is `middle` and half of its width and
 * height, and inside the canvas.
 */
export function ringAround({middle, halfWidth, halfHeight}, width, height) {
    const edge = kBalloon * 0.75;
    return {
        x: Math.min(Math.max(middle.x, width * 0.3), width * 0.7),
        y: Math.min(Math.max(middle.y, height * 0.3), height * 0.7),
        width: Math.min(halfWidth * kBulge + kAway, width / 2 - edge),
        height: Math.min(halfHeight * kBulge + kAway, height / 2 - edge),
    };
}

/** How much of the canvas the model may take, so that there is room for the ring. */
export function roomInside(width, height) {
    const side = size => Math.max(size - 2 * (kBalloon * 0.75 + kAway), 40) / kBulge;
    return {width: side(width), height: side(height)};
}

/** Lengths along the ellipse from angle 0, at kSteps + 1 even angles. */
function arcLengths(ring) {
    const lengths = [0];
    for (let i = 1; i <= kSteps; ++i) {
        const angle = (i - 0.5) / kSteps * 2 * Math.PI;
        const speed = Math.hypot(ring.width * Math.sin(angle), ring.height * Math.cos(angle));
        lengths.push(lengths[i - 1] + speed * 2 * Math.PI / kSteps);
    }
    return lengths;
}

function lengthAt(lengths, angle) {
    const step = ((angle / (2 * Math.PI)) % 1 + 1) % 1 * kSteps;
    const i = Math.min(Math.floor(step), kSteps - 1);
    return lengths[i] + (lengths[i + 1] - lengths[i]) * (step - i);
}

function angleAt(lengths, length) {
    const whole = lengths[kSteps];
    const wanted = (length % whole + whole) % whole;
    const i = Math.max(lengths.findIndex(each => each > wanted) - 1, 0);
    return (i + (wanted - lengths[i]) / (lengths[i + 1] - lengths[i])) / kSteps * 2 * Math.PI;
}

/** Moves neighbours on the ring apart until there is room for each, or less if there is none; as little as that takes. */
function spread(callouts, ring) {
    const count = callouts.length;
    if (count < 2) return;
    const lengths = arcLengths(ring);
    const whole = lengths[kSteps];
    for (const callout of callouts) callout.at = lengthAt(lengths, callout.angle);
    callouts.sort((a, b) => a.at - b.at);
    const gapBefore = i => i === 0 ? callouts[0].at + whole - callouts[count - 1].at : callouts[i].at - callouts[i - 1].at;
    const first = callouts.reduce((best, _, i) => gapBefore(i) > gapBefore(best) ? i : best, 0);
    const order = [...callouts.slice(first), ...callouts.slice(0, first)];
    const room = Math.min(kBalloon + kGap, whole / count);
    // Seen from the packed places, apart means that shifts never decrease: neighbours that would are joined to runs.
    const runs = [];
    order.forEach((callout, i) => {
        const lap = callout.at < order[0].at ? whole : 0;
        runs.push({shift: callout.at + lap - i * room, count: 1});
        while (runs.length > 1 && runs.at(-2).shift > runs.at(-1).shift) joinLast(runs);
    });
    let i = 0;
    for (const run of runs) {
        for (let k = 0; k < run.count; ++k, ++i) order[i].angle = angleAt(lengths, run.shift + i * room);
    }
}

function joinLast(runs) {
    const last = runs.pop();
    const before = runs.at(-1);
    const count = before.count + last.count;
    before.shift = (before.shift * before.count + last.shift * last.count) / count;
    before.count = count;
}
