#version 110
// The film the show is shown from: grain that is new 24 times a second, tape dropouts that come in
// spells, a speck of dust, now and then a scratch, and a projector lamp that flickers by one part
// in a hundred.
//
// Everything is one signed number: light is laid on as bare film, dark as a shadow, `alpha` says
// how much of both. A picture keeps its mean brightness, and black stays nearly black.

uniform float time;  // seconds
uniform float alpha; // 0..1; about 0.3 is a film, 1 a worn-out copy

varying vec2 place; // half screen heights from the centre, y down

const float framesPerSecond = 24.0;
const float reelsPerSecond = 0.45; // how often a scratch may come or go
const vec3 bareFilm = vec3(0.96, 0.91, 0.82);

// Three numbers 0..1 without a pattern, for `p` up to some thousands. Made without a sine, whose
// last digits every driver computes in its own way.
vec3 hash(vec2 p)
{
    vec3 q = fract(p.xyx * vec3(0.1031, 0.1030, 0.0973));
    q += dot(q, q.yzx + 33.33);
    return fract((q.xxy + q.yzz) * q.zyx);
}

// Streaks with a sharp head and a fading tail, in rows that differ in height from frame to frame.
float dropouts(float frame, float rows)
{
    float spell = fract(time * 0.043) * fract(time * 0.31);
    float chance = 0.002 + 0.010 * spell * spell;
    vec3 row = hash(vec2(floor(place.y * rows + 300.0), frame));
    float head = row.x / chance; // the luck that chose the row, spread over the screen
    float along = (place.x + 1.9) * 0.27 - head;
    return max(1.0 - along * (1.5 + 6.0 * row.y), 0.0) * step(0.0, along) * step(row.x, chance);
}

// An upright line that leans a little, trembles with `tremble` and is there in one reel of four.
float scratch(float tremble)
{
    vec3 reel = hash(vec2(floor(time * reelsPerSecond), 5.0));
    float aside = place.x - (reel.y * 3.2 - 1.6) - place.y * 0.02 * reel.z - tremble * 0.006;
    return max(0.35 - abs(aside) * 70.0, 0.0) * step(0.75, reel.x);
}

float dust(vec2 luck)
{
    vec2 speck = place - (luck * vec2(3.6, 2.0) - vec2(1.8, 1.0));
    return 1.2 - dot(speck, speck) * 9000.0;
}

void main()
{
    float frame = floor(time * framesPerSecond);
    vec3 luck = hash(vec2(frame, 17.0));

    // Single pixels, and clumps on a lattice that is turned against the pixels so that it does not
    // show as squares.
    vec2 pixel = floor(gl_FragCoord.xy) + floor(luck.xy * 977.0);
    vec3 fine = hash(pixel);
    vec3 clump = hash(floor(vec2(dot(pixel, vec2(0.45, 0.24)), dot(pixel, vec2(-0.24, 0.45)))));

    float light = (fine.x + fine.y - 1.0) * 0.22 + (clump.x - 0.5) * 0.16;
    light += dropouts(frame, 90.0 + 150.0 * luck.z) * (fine.z * 0.9 + 0.1);
    light += scratch(luck.x) * step(0.35, clump.y);
    light -= max(dust(luck.yz) - clump.z, 0.0) * step(0.5, luck.x);
    light += (luck.y - 0.5) * 0.02;

    // Weak light is grey, so that grain does not snow on black; only real damage shows bare film.
    float bright = light > 0.0 ? min(0.4 + light * 1.5, 1.0) : 0.04;
    gl_FragColor = vec4(bareFilm * bright, min(abs(light), 1.0) * alpha);
}
