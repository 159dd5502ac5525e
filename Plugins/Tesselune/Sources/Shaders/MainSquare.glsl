    vec4 squareColor = getSquareColor(texCoords, normalBlockSize, maxBlockSize, texColor) * multiplier16bit;
    colourOut = mix(colourOut, squareColor, squareColor.a);
