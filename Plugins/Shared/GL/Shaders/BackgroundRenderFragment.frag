#version 330
in vec2 uv;
uniform sampler2D videoTexture;
uniform float multiplier16bit;
out vec4 colourOut;

void main()
{
    colourOut = texture( videoTexture, uv );
    colourOut = colourOut * multiplier16bit;
    colourOut = vec4(colourOut.g, colourOut.b, colourOut.a, colourOut.r);
    colourOut = vec4(colourOut.a * colourOut.r, colourOut.a * colourOut.g, colourOut.a * colourOut.b, colourOut.a);
}
