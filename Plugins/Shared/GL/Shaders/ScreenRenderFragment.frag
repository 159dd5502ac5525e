#version 330
in vec2 uv;
uniform sampler2D videoTexture;
uniform float multiplier16bit;
out vec4 colourOut;

void main()
{
    colourOut = texture( videoTexture, uv );
    if (colourOut.a == 0) {
        colourOut = vec4(0);
    } else {
        colourOut = vec4(colourOut.a, colourOut.r / colourOut.a, colourOut.g / colourOut.a, colourOut.b / colourOut.a);
    }
    colourOut = colourOut / multiplier16bit;
}
