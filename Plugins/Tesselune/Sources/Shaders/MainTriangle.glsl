    vec4 triangleColor = getTriangleColor(texCoords, normalBlockSize, maxBlockSize, texColor) * multiplier16bit;
    colourOut = mix(colourOut, triangleColor, triangleColor.a);
