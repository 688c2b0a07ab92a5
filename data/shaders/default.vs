#version 110
// Carries the full-screen quad through and tells the fragment shader where on the screen it is.

// Half screen heights from the centre of the 16:9 picture: x -1.78 (left) .. 1.78 (right), y -1
// (top) .. 1 (bottom). Taken from the texture coordinate, which spans the picture whatever the
// shape of the window around it.
varying vec2 place;

void main()
{
    place = (gl_MultiTexCoord0.xy - 0.5) * vec2(32.0 / 9.0, 2.0);
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
