#version 110
// The show's weather: fog at dusk, a lamp that brings heat into it, and the lens through which both
// are seen.
//
// The lamp decides the character. Small, low or far outside it leaves slow petrol fog alone; the
// larger it is and the nearer to the centre (best a third of the way down), the more the fog turns
// through plum and brick to amber, and the wider and faster it is stirred. Heat changes how far
// things are stirred, never how fast time runs, so that a moving lamp never makes the picture jump.
//
// No texture reads, no loops, no sines: the waves are parabolas and the falloffs share one
// division, because this is drawn over the whole screen by old laptops and by software.

uniform float time;      // seconds
uniform float alpha;     // 0..1, strength of the whole picture
uniform vec2 resolution; // window size in pixels
uniform vec2 flarepos;   // the lamp: (0, 0) top left of the picture, (1, 1) bottom right, or past
uniform float flaresize; // 0 no lamp, 1 a street lamp, 3 everything glows

varying vec2 place; // half screen heights from the centre, y down

const vec3 night = vec3(0.028, 0.095, 0.120);
const vec3 petrol = vec3(0.070, 0.255, 0.300);
const vec3 mint = vec3(0.380, 0.760, 0.680);
const vec3 plum = vec3(0.280, 0.095, 0.270);
const vec3 brick = vec3(0.720, 0.190, 0.100);
const vec3 amber = vec3(1.000, 0.480, 0.110);
const vec3 cream = vec3(1.000, 0.860, 0.660);
const vec3 blueGlass = vec3(0.300, 0.550, 0.660);
const vec3 roseGlass = vec3(0.600, 0.250, 0.250);

// Four sines of period 1 and height 1/16, made of parabolas.
vec4 wave(vec4 x)
{
    x -= floor(x + 0.5);
    return x * (0.5 - abs(x));
}

// Density (about 0..1), bands, threads and plum haze of the fog at `p`. Each stirring shifts every
// point across the direction of its waves, as a current does, so that the fog is drawn out and
// folded but nowhere squeezed.
vec4 fog(vec2 p, float heat)
{
    vec4 slow = wave(p.x * vec4(0.23, -0.13, 0.31, -0.19) + p.y * vec4(0.11, 0.27, -0.22, -0.33) +
                     time * vec4(0.019, -0.014, 0.022, 0.025));
    vec2 q = vec2(p.x + 0.5 * p.y, p.y - 0.5 * p.x) +
             vec2(dot(slow, vec4(-3.2, -6.8, 3.5, 3.6)), dot(slow, vec4(6.8, -3.2, 4.8, -2.2)));

    // Straight across and straight down will do: the first stirring has bent these axes already.
    vec4 fast = wave(q.yyxx * vec4(0.47, 0.74, 0.39, 0.66) +
                     time * vec4(0.11, -0.093, 0.127, -0.08));
    vec2 swirl = vec2(fast.x * 3.6 - fast.y * 2.4, fast.z * 4.0 + fast.w * 2.4);
    vec2 r = q + (0.3 + 1.2 * heat) * swirl;

    vec2 slant = vec2(r.x + r.y, r.x - r.y);
    vec4 cloud = wave(vec4(r, slant) * vec4(0.53, -0.61, 0.37, 0.46) +
                      time * vec4(-0.029, 0.021, 0.037, -0.033));
    float density = dot(cloud, vec4(2.6, 2.3, 2.2, 1.6)) + 0.5;
    vec2 grain = slant * vec2(0.6, -0.9) + r * vec2(0.9, 1.2);
    vec4 fine = wave(vec4(r.x * 0.3, r.y * 0.25, grain) + density * vec4(1.9, 2.6, 1.2, -1.0) +
                     time * vec4(0.04, 0.09, -0.023, 0.03));
    density += fine.z * 1.1 + fine.w;
    float thread = 1.0 - 16.0 * abs(fine.y);
    float haze = (cloud.w * 2.0 + slow.x * 1.5 + 0.25) * (1.0 - density);
    return vec4(density, fine.x * 8.0 - 0.2, thread * thread, haze);
}

// The lamp's wide glow, its core and the flat streak a film lens draws through it. `square` is the
// squared distance from the lamp along x and y. Three falloffs, one division.
vec3 shine(vec2 square, float power)
{
    float far = square.x + square.y;
    float glow = power * 0.4 + 0.6 + far * 2.4;
    float core = far + square.y * 0.4 + 0.007;
    float streak = (1.0 + square.y * 9000.0) * (2.7 + 2.5 * square.x);
    float both = glow * core;
    float share = power / (both * streak);
    float rest = share * streak;
    return vec3(rest * core, rest * glow * 0.011, share * both);
}

// Eight reflections on the line from the lamp through the centre: four sharp discs with a bright
// rim, four blurred rings. A reflection at k times the lamp's place with the radius R has the
// squared distance (pp - 2 k pl + k k ll) / (R R), where pp, pl and ll are the dot products of
// point and lamp.
vec4 ghosts(float pp, float pl, float ll)
{
    vec4 sharp = pp * vec4(90.0, 20.0, 4.5, 160.0) +
                 pl * vec4(54.0, 24.8, 11.25, -144.0) +
                 ll * vec4(8.1, 7.688, 7.03, 32.4);
    vec4 blurred = pp * vec4(30.0, 60.0, 2.0, 900.0) +
                   pl * vec4(7.2, 102.0, 7.0, 846.0) +
                   ll * vec4(0.432, 43.35, 6.125, 198.8);
    blurred = max(1.0 - blurred, 0.0);
    return clamp(8.0 - 8.0 * sharp, 0.0, 1.0) * (0.036 + 0.084 * sharp * sharp) +
           (blurred - blurred * blurred) * vec4(0.3, 0.45, 0.25, 1.2);
}

void main()
{
    vec2 lamp = flarepos * vec2(32.0 / 9.0, 2.0) - vec2(16.0 / 9.0, 1.0);
    float power = max(flaresize, 0.0);
    float pl = dot(place, lamp), ll = dot(lamp, lamp);
    float heat = min(power * max(0.41 - 0.10 * ll - 0.08 * lamp.y, 0.10), 1.0);
    vec4 air = fog(place, heat);
    float density = air.x;

    vec2 square = (place - lamp) * (place - lamp);
    vec3 light = shine(square, power);
    vec4 ghost = ghosts(dot(place, place), pl, ll) * (power * min(0.35 + ll, 1.0));
    // The halo's colours lie a little apart, and it is brighter towards the centre of the lens.
    vec3 halo = max(1.0 - abs((square.x + square.y) * 8.0 - vec3(4.88, 5.12, 5.36)), 0.0);
    float side = clamp(0.045 + 0.06 * (ll - pl), 0.015, 0.1) * power;

    // From the fog's own colour over plum and brick to amber: a curve with these as its handles.
    float warm = heat * 0.50 + light.x * 0.60;
    float taken = 0.15 + 0.7 * density + 0.5 * air.y * heat; // thick fog takes more of the heat
    float t = clamp(warm * (0.35 + 0.9 * warm) * taken, 0.0, 1.0);
    float u = 1.0 - t;
    float tt = t * t, crest = density * density * u;
    float bright = 0.33 + 0.94 * density + heat * (air.y * 0.6 + 0.4 * t * air.z - 0.1);
    vec3 colour = night + (petrol - night) * density + mint * (0.24 * crest * crest);
    colour = colour * u + plum * (air.w * u + 2.1 * t);
    colour = (colour * u + brick * (3.0 * tt)) * (u * bright);
    colour += amber * (tt * t * bright + light.x * light.x * (0.10 + 0.35 * density) + ghost.x);
    colour += cream * light.y + blueGlass * (light.z + ghost.y) + roseGlass * (ghost.z + ghost.w);
    colour += halo * halo * side;

    // A soft shoulder up to white at 1.6; then half a step of ordered noise, for 8 bits show bands
    // in a dark fog.
    colour = min(colour, 1.6);
    colour *= 1.25 - 0.390625 * colour;
    float dither = fract(dot(place, resolution.x * (vec2(0.7548777, 0.5698403) * 0.28125)));
    gl_FragColor = vec4(colour + (dither - 0.5) * (1.0 / 255.0), alpha);
}
