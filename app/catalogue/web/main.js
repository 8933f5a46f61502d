// Starts the page: reads what it was told, and makes list, drawing and, once asked for, the model.

import {Drawing} from './drawing.js';
import {setUpDetails, setUpKeys, setUpTexts, setUpTheme, setUpViews} from './layout.js';
import {PartsList} from './list.js';
import {Selection} from './selection.js';
import {counted} from './texts.js';
import {Viewer3d} from './viewer3d.js';

const data = JSON.parse(document.getElementById('data').textContent);
const {words} = data;
const selection = new Selection();
let viewer = null;

function startViewer() {
    if (viewer) return;
    const pane = document.getElementById('model');
    try {
        viewer = new Viewer3d(data, selection, pane);
    } catch (error) {
        console.warn(error);
        pane.classList.add('failed');
        pane.querySelector('.notice').textContent = words.noModel;
    }
}

/** What Escape ends before it ends the choice. */
function leaveIsolation() {
    if (!viewer?.isIsolated) return false;
    viewer.isolate(false);
    return true;
}

setUpTheme();
setUpTexts(words);
setUpViews(view => { if (view !== 'drawing') startViewer(); });
document.getElementById('summary').textContent =
    `${counted(words.itemsOne, words.itemsMore, data.items.length)}, ` +
    counted(words.partsOne, words.partsMore, data.scene.parts.length);
setUpDetails(data, selection, words);  // before the list, which it leaves less room
const drawing = new Drawing(data, selection, words);
const list = new PartsList(data, selection, words, drawing.seenItems);
setUpKeys(selection, list, leaveIsolation);
