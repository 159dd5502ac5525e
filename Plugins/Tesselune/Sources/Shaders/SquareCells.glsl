// Square cells. The size ladder holds the sizes that a random cell may have, each twice the next
// smaller one. At level g, from sizeLevel (largest) down to 1, a cell measures maxBlockSize /
// pow(2.0, sizeLevel - g).

vec2 squareGrid(vec2 loc, vec2 block, float gridLevel)
{
    return floor(loc/block) * pow(10.0, gridLevel);
}

void getSquareMosicSample(in vec2 pixLoc, in vec2 blockSize, inout MosicSample sample)
{
    vec2 offset = vec2(mod(pixLoc.x, blockSize.x), mod(pixLoc.y, blockSize.y));
    vec2 sampleLoc = pixLoc - offset + blockSize * 0.5;
    sample.colorCoords = sampleLoc;
    sample.center = restrainPosition(sampleLoc);
    sample.realUnitSize = blockSize;
}

void getComplexSquareMosaicSample(in vec2 pixLoc, in vec2 normalBlockSize, in vec2 maxBlockSize, inout MosicSample sample)
{
    vec2 highGrid = squareGrid(pixLoc, maxBlockSize, sizeLevel);
    sample.grid = squareGrid(pixLoc, normalBlockSize, sizeLevel);
    sample.texCoords = pixLoc;
    getSquareMosicSample(pixLoc, normalBlockSize, sample);
    float randomFactor = rand(highGrid);
    float gridLevel = sizeLevel;
    if (sizeRandomLimit > 0.0 && fastPercentFilter(randomFactor, sizeRandomLimit) > 0.0) {
        for(;gridLevel > 0.0;gridLevel -= 1.0) {
            vec2 realUnitSize = maxBlockSize / pow(2.0, sizeLevel - gridLevel);
            vec2 grid = squareGrid(pixLoc, realUnitSize, gridLevel);
            float randomFactor = rand(grid);
            if (randomFactor >= 0.5) {
                sample.grid = grid;
                getSquareMosicSample(pixLoc, realUnitSize, sample);
                return;
            }
        }
    }
}

vec4 getSquareColor(in vec2 texCoords, in vec2 normalBlockSize, in vec2 maxBlockSize, in vec4 texColor)
{
    MosicSample sample;
    getComplexSquareMosaicSample(texCoords, normalBlockSize, maxBlockSize, sample);
    mosaicColor(sample, texColor);
    dissolve(sample);
    return sample.color;
}

