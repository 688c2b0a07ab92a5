// The music, and the time that it makes: an <audio> element plays the file while it comes, and the
// program's clock (sound/SoundClock.h) makes an even time of the positions that the element tells.

import {FileError} from './files.js';

// Firefox asks another process, which now and then never answers: the page would stand still. The
// position that it tells is the device's own.
const canAskLatency = !navigator.userAgent.includes('Firefox/');
const latencyMilliseconds = 1000; // between two questions for the latency
const nearSeconds = 0.3; // a seek that lands this near is good

export class Music {
    constructor(score, files) {
        this.program = score.program;
        this.files = files;
        this.path = score.show.music;
        this.audio = new Audio();
        this.audio.preload = 'none';
        this.reported = 0; // seconds of latency
        this.offset = 0; // seconds by which the listener's loudspeaker is later than the device says
        this.shown = 0; // the position handed out last; it goes back by a seek alone
        this.isAsked = false; // to play
        this.onfail = () => {};
        this.onend = () => {};
        this.onsilence = () => {}; // no sound device: it plays on, muted
        const entry = files.entry(this.path);
        if (!entry)
            throw new FileError(this.path, `${this.path} is not part of this site.`, true);
        this.audio.src = entry.url.split('/').map(part => encodeURIComponent(part).replace('%3F', '?')).join('/');
        this.audio.addEventListener('error', () => this.fail());
        // At its end an element may say that it has played to where the file should have ended.
        this.heard = 0;
        this.audio.addEventListener('timeupdate', () => { this.heard = this.audio.ended ? this.heard : this.audio.currentTime; });
        this.audio.addEventListener('ended', () => this.onend(this.heard));
    }

    // The music itself may come now.
    prepare() {
        if (this.audio.preload !== 'auto')
            this.audio.preload = 'auto';
    }

    fail() {
        const kind = this.audio.error?.code;
        if (/Sink/i.test(this.audio.error?.message) && !this.audio.muted) {
            this.goSilent();
            return;
        }
        const reason = kind === 2 ? 'the connection broke' : kind === 3 ? 'it arrived broken' : 'it is missing on the server, or no music that this browser plays';
        this.onfail(new FileError(this.path, `${this.path}: ${reason}.`, kind !== 2));
    }

    // There is no sound device: muted, the element keeps time by itself.
    async goSilent() {
        const place = this.shown;
        this.audio.muted = true;
        this.audio.load();
        this.audio.currentTime = place;
        this.restart();
        if (this.isAsked)
            await this.audio.play();
        this.onsilence();
    }

    // To be called by a click or a key: sound may not begin before.
    async play() {
        this.isAsked = true;
        this.context ||= new AudioContext({latencyHint: 'playback'});
        this.context.resume();
        this.restart();
        await this.audio.play();
    }

    pause() {
        this.isAsked = false;
        this.audio.pause();
    }

    restart() {
        this.program._vyr_clock_restart();
        this.stood = this.audio.currentTime;
        this.isMoving = false;
    }

    async seek(seconds) {
        if (!this.reaches(seconds))
            await this.takeWhole();
        this.audio.currentTime = seconds;
        this.shown = this.heard = seconds;
        this.restart();
    }

    // A server may be unable to send parts of a file: then what has not come can't be played.
    reaches(seconds) {
        const parts = this.audio.seekable;
        for (let i = 0; i < parts.length; i++)
            if (seconds >= parts.start(i) - nearSeconds && seconds <= parts.end(i) + nearSeconds)
                return true;
        return false;
    }

    async takeWhole() {
        if (this.audio.src.startsWith('blob:'))
            return;
        const bytes = await this.files.get(this.path);
        const wasPlaying = !this.audio.paused;
        const isReady = new Promise(done => this.audio.addEventListener('loadedmetadata', done, {once: true}));
        this.audio.src = URL.createObjectURL(new Blob([bytes], {type: 'audio/mpeg'}));
        this.audio.load();
        await isReady;
        if (wasPlaying)
            await this.audio.play();
    }

    // From the loudspeaker's buffer to the ear, as far as the browser knows it. Asking takes a
    // browser some time, and headphones are seldom changed.
    get latency() {
        const now = performance.now();
        if (this.context && canAskLatency && !(now - this.askedAt < latencyMilliseconds)) {
            this.askedAt = now;
            this.reported = this.context.outputLatency || this.context.baseLatency || 0;
        }
        return this.reported + this.offset;
    }

    // The position that is heard at `now`, seconds of performance.now().
    at(now) {
        const position = this.audio.currentTime;
        // Before the device plays, the position stands; the clock starts with the first step.
        this.isMoving ||= this.isAsked && position !== this.stood && !this.audio.seeking;
        if (this.isAsked && this.isMoving) {
            this.program._vyr_clock_observe(now, position - this.latency);
            this.shown = Math.max(this.shown, this.program._vyr_clock_at(now));
        }
        return this.shown;
    }
}
