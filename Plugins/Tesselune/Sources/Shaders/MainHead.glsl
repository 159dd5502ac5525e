void main()
{
    vec2 texCoords = floor(uv*texSize);
    vec4 texColor = swapChannel(texture(videoTexture, uv)) * multiplier16bit;
    colourOut= mix(texColor, vec4(0.0), useAlpha);
