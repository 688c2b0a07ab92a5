// The page around the player: what is pressed, what is said, what is remembered.

import {readCues, textAt} from './captions.js';
import {Player} from './player.js';

const quietMilliseconds = 2500; // pointer and bar hide after this long without a move
const noteMilliseconds = 6000;
const waitMilliseconds = 400; // a shorter wait is not worth a line

const get = id => document.getElementById(id);
const body = document.body;
const player = new Player(get('box'));
let cues = [];

// What the viewer chose last, where the browser keeps such things.
const remembered = {
    read(key) {
        try { return localStorage.getItem('vyr.' + key); } catch { return null; }
    },
    write(key, value) {
        try { localStorage.setItem('vyr.' + key, value); } catch { /* a private window forgets */ }
    },
};

const clock = seconds => `${Math.floor(seconds / 60)}:${String(Math.floor(seconds % 60)).padStart(2, '0')}`;

// Notes: one line at the top, for a while.
let noteEnd = 0;
function note(text, milliseconds = noteMilliseconds) {
    clearTimeout(noteEnd);
    get('note').textContent = text;
    get('note').hidden = !text;
    if (text && milliseconds)
        noteEnd = setTimeout(() => note(''), milliseconds);
}

// The bar and the pointer are there while something moves.
let quietTimer = 0;
function stir() {
    body.classList.remove('is-quiet');
    clearTimeout(quietTimer);
    if (player.state === 'playing')
        quietTimer = setTimeout(() => body.classList.toggle('is-quiet', !isAdjusting()), quietMilliseconds);
}
const isAdjusting = () => !get('delay-panel').hidden;

function showTitle() {
    body.classList.add('at-title');
    body.classList.remove('is-quiet');
    get('start').focus();
}

function toggle() {
    if (body.classList.contains('at-title'))
        start();
    else if (player.state === 'playing')
        player.pause();
    else
        player.play();
    stir();
}

function start() {
    if (!['ready', 'paused', 'ended'].includes(player.state))
        return;
    body.classList.remove('at-title');
    get('start').blur();
    player.play();
    stir();
}

function toggleFullscreen() {
    if (document.fullscreenElement)
        document.exitFullscreen();
    else
        document.documentElement.requestFullscreen?.().catch(() => note('This browser gives no full screen here.'));
}

function leave() {
    if (body.classList.contains('at-title') || player.state === 'failed')
        return;
    player.pause();
    showTitle();
}

function seekBy(seconds) {
    if (!body.classList.contains('at-title'))
        player.seek(player.seconds + seconds);
}

function toggleCaptions() {
    const isOn = get('captions').getAttribute('aria-pressed') !== 'true';
    setCaptions(isOn);
    remembered.write('captions', isOn ? 'on' : 'off');
}

function setCaptions(isOn) {
    get('captions').setAttribute('aria-pressed', isOn);
    showCaption(player.seconds);
}

function showCaption(seconds) {
    const isOn = get('captions').getAttribute('aria-pressed') === 'true';
    const text = isOn && !body.classList.contains('at-title') ? textAt(cues, seconds) : '';
    if (get('caption').textContent !== text)
        get('caption').textContent = text;
    get('caption').hidden = !text;
}

function setOffset(milliseconds) {
    get('offset').value = milliseconds;
    get('offset-text').textContent = `${milliseconds} ms`;
    get('offset').style.setProperty('--part', `${(Number(milliseconds) + 300) / 8}%`);
    if (player.music)
        player.music.offset = milliseconds / 1000;
}

// The seek bar follows the show, four times a second, unless somebody pulls at it.
let shownTenth = -1;
function showTime(seconds, isSure = false) {
    const tenth = Math.floor(seconds * 4);
    if (tenth === shownTenth && !isSure)
        return;
    shownTenth = tenth;
    const whole = player.score.seconds, seek = get('seek');
    if (!seek.matches(':active') || isSure)
        seek.value = seconds;
    seek.style.setProperty('--part', `${100 * seek.value / whole}%`);
    seek.setAttribute('aria-valuetext', `${clock(seconds)} of ${clock(whole)}`);
    get('time').textContent = `${clock(seconds)} / ${clock(whole)}`;
    showCaption(seconds);
}

function showState() {
    const state = player.state;
    body.classList.toggle('is-playing', state === 'playing');
    const name = state === 'playing' ? 'Pause' : 'Play';
    get('pause').setAttribute('aria-label', name);
    get('pause').title = `${name} (Space)`;
    if (state === 'ended')
        showTitle();
    if (state === 'failed')
        showFailure();
    if (state !== 'loading' && state !== 'failed') {
        get('start').disabled = false;
        get('start-text').textContent = state === 'paused' ? 'Go on' : state === 'ended' ? 'Once more' : 'Start';
        get('progress').classList.add('done');
    }
    stir();
}

function showFailure() {
    showTitle();
    get('error').textContent = player.error.message;
    get('error').hidden = false;
    get('start').hidden = true;
    get('progress').hidden = true;
    get('again').hidden = false;
    get('again').focus();
}

function describeFlashes({general, red, within}) {
    const most = Math.max(general, red);
    if (!within)
        return `Warning: this show flashes up to ${most} times a second, more than is held to be safe for people with photosensitive epilepsy.`;
    return most > 0
        ? `Flashing: up to ${most} times a second, within the three that are held to be safe (WCAG 2.3.1).`
        : 'Nothing in this show flashes.';
}

// What of the site is for reading: it may be missing.
async function fetchText(name) {
    return new TextDecoder().decode(await player.files.getOwn(name));
}

async function showExtras() {
    const {manifest} = player.files;
    if (manifest.title) {
        get('title-picture').src = manifest.title.url;
        get('title-picture').hidden = false;
    }
    if (manifest.flashes) {
        get('flashes').textContent = describeFlashes(manifest.flashes);
        get('flashes').hidden = false;
    }
    if (manifest.captions) {
        cues = readCues(await fetchText('captions'));
        get('captions').hidden = false;
        setCaptions(remembered.read('captions') === 'on');
    }
    if (manifest.transcript) {
        get('transcript-text').textContent = await fetchText('transcript');
        get('transcript').hidden = false;
    }
}

function showProgress() {
    const {files} = player;
    if (player.state !== 'loading' || !files.manifest)
        return;
    const part = Math.min(99, Math.round(100 * files.received / Math.max(1, files.expected)));
    get('progress').firstElementChild.style.width = `${part}%`;
    get('progress').setAttribute('aria-valuenow', part);
}

player.addEventListener('progress', showProgress);
player.addEventListener('state', showState);
player.addEventListener('time', event => showTime(event.detail));
player.addEventListener('described', ({detail: show}) => {
    document.title = show.title;
    get('name').textContent = show.title;
    const seconds = player.score.seconds;
    get('length').textContent = `${Math.floor(seconds / 60)} minutes ${Math.floor(seconds % 60)} seconds, with sound`;
    get('seek').max = seconds;
    setOffset(Number(remembered.read('offset')) || 0);
    showTime(0, true);
});
player.addEventListener('missing', event => note(`${event.detail.message} The show goes on without it.`));
player.addEventListener('silence', () => note('There is no sound device: the show goes on silently.'));
player.addEventListener('lost', () => note('The graphics were reset. One moment.', 0));
player.addEventListener('restaged', () => { if (get('note').textContent.startsWith('The graphics')) note(''); });
let waitTimer = 0;
player.addEventListener('waiting', event => {
    clearTimeout(waitTimer);
    if (event.detail)
        waitTimer = setTimeout(() => note('Loading: the music waits for the picture.', 0), waitMilliseconds);
    else
        note('');
});

get('start').addEventListener('click', start);
get('again').addEventListener('click', () => location.reload());
get('pause').addEventListener('click', toggle);
get('fullscreen').addEventListener('click', toggleFullscreen);
get('captions').addEventListener('click', toggleCaptions);
get('seek').addEventListener('input', () => showTime(Number(get('seek').value), false));
get('seek').addEventListener('change', () => player.seek(Number(get('seek').value)).then(() => showTime(player.seconds, true)));
get('offset').addEventListener('input', () => {
    setOffset(Number(get('offset').value));
    remembered.write('offset', get('offset').value);
});
get('delay-button').addEventListener('click', () => {
    const panel = get('delay-panel');
    panel.hidden = !panel.hidden;
    get('delay-button').setAttribute('aria-expanded', !panel.hidden);
    stir();
});
get('box').addEventListener('dblclick', toggleFullscreen);
addEventListener('pointermove', stir);
addEventListener('pointerdown', stir);

const keys = {
    ' ': toggle, k: toggle, f: toggleFullscreen, c: toggleCaptions, Escape: leave,
    ArrowLeft: () => seekBy(-5), ArrowRight: () => seekBy(5),
};
addEventListener('keydown', event => {
    const action = keys[event.key.length === 1 ? event.key.toLowerCase() : event.key];
    const isTaken = event.target.closest('button, input, summary') && event.key !== 'Escape' && event.key.length !== 1;
    const presses = event.key === ' ' && event.target.closest('button, input, summary');
    if (!action || isTaken || presses || event.ctrlKey || event.metaKey || event.altKey)
        return;
    event.preventDefault();
    action();
    stir();
});
addEventListener('focusin', stir);

addEventListener('unhandledrejection', event => player.fail(event.reason));
window.vyr = player; // for tests, and for those who embed the page
try {
    await player.files.open();
    showExtras().catch(error => note(error.message));
    await player.open();
} catch (error) {
    player.fail(error);
}
