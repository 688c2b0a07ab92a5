// The words of the show: WebVTT read, the cue at a time found.

const time = /^(?:(\d+):)?(\d\d):(\d\d\.\d{3}) --> (?:(\d+):)?(\d\d):(\d\d\.\d{3})/;

function seconds(hours, minutes, rest) {
    return 3600 * Number(hours || 0) + 60 * Number(minutes) + Number(rest);
}

// [{from, to, text}], in seconds, by their beginning.
export function readCues(vtt) {
    const cues = [];
    for (const block of vtt.split(/\r?\n\r?\n/)) {
        const lines = block.trim().split(/\r?\n/);
        const at = lines.findIndex(line => time.test(line));
        if (at < 0)
            continue;
        const [, h1, m1, s1, h2, m2, s2] = lines[at].match(time);
        cues.push({from: seconds(h1, m1, s1), to: seconds(h2, m2, s2), text: plain(lines.slice(at + 1).join('\n'))});
    }
    return cues.sort((a, b) => a.from - b.from);
}

function plain(text) {
    return text.replace(/<[^>]*>/g, '').replace(/&lt;/g, '<').replace(/&gt;/g, '>').replace(/&nbsp;/g, ' ').replace(/&amp;/g, '&');
}

export function textAt(cues, at) {
    return cues.filter(cue => at >= cue.from && at < cue.to).map(cue => cue.text).join('\n');
}
