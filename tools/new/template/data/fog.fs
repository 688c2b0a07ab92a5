#version 110
uniform float seconds, alpha;
uniform vec2 resolution;

void main()
{
    vec2 p = gl_FragCoord.xy / resolution.y;
    float waves = sin(3.0 * p.x + seconds) + sin(5.0 * p.x - 1.3 * seconds + 4.0 * p.y);
    float height = 0.35 + 0.05 * waves;
    gl_FragColor = vec4(0.45, 0.55, 0.75, alpha * smoothstep(height, 0.0, p.y));
}
