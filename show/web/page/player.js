// The player: files, stage, music and time together, without a button. The page around it is main.js.

import {FileError, Files} from './files.js';
import {Music} from './music.js';
import {Score} from './score.js';
import {Stage} from './stage.js';

const firstSeconds = 20; // what they show is there before the show may begin
const missingSeconds = 3; // music that ends so much earlier than the show is not all of it
const framesPerSecond = 60; // of the recorder, whose stills are the measure
const resizeMilliseconds = 250; // a window that is being pulled is left alone for so long

export class Player extends EventTarget {
    // `box`: the element that the picture fills.
    constructor(box) {
        super();
        this.box = box;
        this.files = new Files();
        this.state = 'loading'; // ready, playing, paused, ended, failed
        this.waitsFor = null; // a file that the picture at this place needs
        this.frames = 0;
        this.files.onprogress = () => this.tell('progress');
        this.failedPictures = new Set();
        this.drawnRow = null;
    }

    tell(type, detail) {
        this.dispatchEvent(new CustomEvent(type, {detail}));
    }

    enter(state) {
        this.state = state;
        this.tell('state', state);
    }

    // Loads what the first seconds need, once the files' manifest is there. Fails with an error
    // whose message is one sentence.
    async open() {
        const [, code, tracks] = await Promise.all([this.loadProgram(), this.files.getOwn('code'), this.files.getOwn('tracks')]);
        this.code = code;
        this.tracks = JSON.parse(new TextDecoder().decode(tracks));
        this.score = await Score.open(this.code, this.tracks);
        this.music = new Music(this.score, this.files);
        this.music.onfail = error => this.fail(error);
        this.music.onend = heard => this.endOfMusic(heard);
        this.music.onsilence = () => this.tell('silence');
        this.tell('described', this.score.show);
        // Asked for now, all at once; the stage waits for those that it can't do without.
        const early = this.score.order(0, firstSeconds * this.rate);
        this.files.ask([...this.score.show.files, ...this.objects(), ...early]);
        await this.raiseStage(early);
        addEventListener('resize', () => this.resized());
        this.fetchRest(0);
        this.music.prepare();
        this.enter('ready');
    }

    get rate() {
        return this.score.show.rowsPerSecond;
    }

    // What the tracks pick and is no picture is loaded at once, for the show reads it then.
    objects() {
        const picked = this.score.show.choices.flatMap(choice => choice.files);
        return [...new Set(picked)].filter(path => path in this.files.manifest.files);
    }

    // The program's own script: a module would not do, for the compiler writes none.
    async loadProgram() {
        const entry = this.files.manifest.program;
        await new Promise((done, fail) => {
            const script = document.createElement('script');
            script.src = entry.url;
            script.onload = done;
            script.onerror = () => fail(new FileError('program.js', 'program.js is missing on the server.', true));
            document.head.append(script);
        });
        if (typeof createShow !== 'function')
            throw new FileError('program.js', 'program.js: the server sent something else.', true);
    }

    // A stage of the window's size, with all pictures that it needs at once: those that no track
    // picks, and `picked`.
    async raiseStage(picked) {
        const [width, height] = this.size(), canvas = document.createElement('canvas');
        this.box.append(canvas);
        const stage = await Stage.open(canvas, width, height, this.code, this.tracks, this.files, this.score.show);
        const byTracks = new Set(this.score.show.choices.flatMap(choice => choice.files));
        const needed = stage.missing.filter(path => !byTracks.has(path) || picked.includes(path));
        await Promise.all(needed.map(path => this.bring(stage, path)));
        stage.upload();
        canvas.addEventListener('webglcontextlost', event => this.lost(event, stage));
        this.stage?.close();
        this.stage = stage;
        this.drawnRow = null;
    }

    // A picture that does not come is left out: the show goes on, and the page says which.
    async bring(stage, path) {
        try {
            await stage.take(path, await this.files.get(path));
        } catch (error) {
            this.leaveOut(stage, path, error);
        }
    }

    leaveOut(stage, path, error) {
        stage.giveUp(path);
        if (this.failedPictures.has(path))
            return;
        this.failedPictures.add(path);
        this.tell('missing', error);
    }

    // All other pictures, in the order of their first use from `row` on.
    fetchRest(row) {
        const wanted = this.score.order(row).filter(path => path in this.files.manifest.pictures);
        for (const path of wanted) // what is here already may still have to be uploaded
            if (this.files.arrived.has(path) && !this.stage.has(path))
                this.bring(this.stage, path);
        this.files.line(wanted, (path, bytes, error) => {
            if (error)
                this.leaveOut(this.stage, path, error);
            else
                this.takeLater(this.stage, path, bytes);
        });
    }

    // Uploaded by a frame, or now where none is drawn.
    async takeLater(stage, path, bytes) {
        try {
            await stage.take(path, bytes);
        } catch (error) {
            this.leaveOut(stage, path, error);
        }
        if (this.state !== 'playing' && !stage.isLost)
            stage.upload();
    }

    size() {
        const scale = devicePixelRatio || 1;
        return [this.box.clientWidth, this.box.clientHeight].map(length => Math.max(1, Math.round(length * scale)));
    }

    resized() {
        clearTimeout(this.resizing);
        this.resizing = setTimeout(() => {
            const [width, height] = this.size(), canvas = this.stage.canvas;
            if (width !== canvas.width || height !== canvas.height)
                this.restage();
        }, resizeMilliseconds);
    }

    // Another stage takes the place of this one, which is shown meanwhile.
    async restage() {
        if (this.isRestaging) {
            this.isStale = true;
            return;
        }
        this.isRestaging = true;
        try {
            do {
                this.isStale = false;
                await this.raiseStage(this.score.picked(this.row));
            } while (this.isStale);
            this.fetchRest(this.row);
            this.tell('restaged');
        } catch (error) {
            this.fail(error);
        } finally {
            this.isRestaging = false;
        }
        if (this.state !== 'playing')
            this.show();
    }

    lost(event, stage) {
        event.preventDefault();
        if (stage !== this.stage)
            return; // closed on purpose
        stage.isLost = true;
        this.tell('lost');
        this.restage();
    }

    get seconds() {
        return this.music ? this.music.shown : 0;
    }

    get row() {
        return Math.min(this.seconds * this.rate, this.score.show.lastRow);
    }

    async play() {
        if (this.state === 'failed')
            return;
        if (this.state === 'ended')
            await this.seek(0);
        this.enter('playing');
        this.schedule();
        await this.start();
    }

    // One frame to come, never two.
    schedule() {
        cancelAnimationFrame(this.request);
        this.request = requestAnimationFrame(time => this.frame(time));
    }

    // The music, unless the picture has to wait.
    async start() {
        try {
            await this.music.play();
        } catch (error) {
            if (error.name === 'NotAllowedError')
                this.pause();
            else if (error.name !== 'AbortError' && !this.music.audio.error)
                this.fail(new Error('The music does not start: ' + error.message));
        }
    }

    pause() {
        this.music.pause();
        this.waitsFor = null;
        if (this.state !== 'playing')
            return;
        this.enter('paused');
        this.show(); // the place of the music, where the last picture is of an earlier one
    }

    async seek(seconds) {
        const end = this.score.seconds;
        const place = Math.min(Math.max(seconds, 0), end - 0.05);
        try {
            await this.music.seek(place);
        } catch (error) {
            this.fail(error);
            return;
        }
        if (this.state === 'ended')
            this.enter('paused');
        this.drawnRow = null;
        this.tell('time', place);
        this.fetchRest(Math.floor(place * this.rate));
        if (this.state !== 'playing')
            this.show();
    }

    // The picture of a place where nothing plays; it comes when its pictures are there.
    async show() {
        const row = this.row, stage = this.stage;
        await this.bringPicked(stage, row);
        if (this.state === 'playing' || stage !== this.stage || row !== this.row || row === this.drawnRow)
            return;
        this.drawStill(row);
        this.tell('time', this.seconds);
    }

    async bringPicked(stage, row) {
        const needed = this.score.picked(row).filter(path => !stage.has(path));
        await Promise.all(needed.map(path => this.bring(stage, path)));
        stage.upload();
    }

    // One picture out of the course of the show, as the recorder draws it: what the frames before
    // leave to it is drawn before.
    drawStill(row) {
        const end = Math.ceil(row / this.rate * framesPerSecond - 1e-6);
        const before = this.score.reachingBefore(end, framesPerSecond);
        for (const frame of new Set([before, end - 1]))
            if (frame >= 0)
                this.draw(frame / framesPerSecond * this.rate, frame / framesPerSecond);
        this.draw(row, row / this.rate);
    }

    draw(row, seconds) {
        if (this.stage.isLost)
            return;
        try {
            this.stage.draw(row, seconds);
        } catch (error) {
            this.fail(error);
        }
        this.drawnRow = row;
        this.frames++;
    }

    frame(time) {
        if (this.state !== 'playing')
            return;
        this.schedule();
        this.stage.upload(1);
        if (this.waits())
            return;
        this.frameTime = time / 1000; // the display's, for which the picture is drawn
        const seconds = this.music.at(this.frameTime), row = seconds * this.rate;
        if (row !== this.drawnRow)
            this.draw(row, seconds);
        this.tell('time', seconds);
        if (row >= this.score.show.lastRow)
            this.end();
    }

    // Whether a picture of this place is still on its way: the music waits with it.
    waits() {
        const picked = this.score.picked(this.row);
        picked.forEach(path => this.stage.uploadNow(path));
        const absent = picked.find(path => !this.stage.has(path)) || null;
        if (absent && !this.waitsFor) {
            this.music.pause();
            this.bring(this.stage, absent);
        } else if (!absent && this.waitsFor) {
            this.start();
        } else if (absent && absent !== this.waitsFor) {
            this.bring(this.stage, absent);
        }
        if (absent !== this.waitsFor) {
            this.waitsFor = absent;
            this.tell('waiting', absent);
        }
        return absent !== null;
    }

    // The file may be shorter than the show: half of it, or another one.
    endOfMusic(heard) {
        const lacking = this.score.seconds - heard;
        if (lacking > missingSeconds)
            this.fail(new FileError(this.music.path, `${this.music.path} ends too early: only a part of it arrived.`, true));
        else
            this.end();
    }

    end() {
        if (this.state !== 'playing')
            return;
        this.music.pause();
        this.enter('ended');
    }

    fail(error) {
        if (this.state === 'failed')
            return;
        this.music?.pause();
        this.error = error;
        this.enter('failed');
    }
}
