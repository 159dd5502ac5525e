// Triangle cells: the picture is sheared and divided into rectangles, each cut in two along its
// diagonal.

mat2 triangleMat(vec2 size)
{
    return mat2(1.0, 0, (size.x*0.5) / size.y, 1.0);
}

mat2 inverseTriangleMat(vec2 size)
{
    return mat2(1.0, 0.0, -(size.x*0.5)/ size.y, 1.0);
}

vec2 triangleGrid(vec2 loc, vec2 block, float gridLevel)
{
    return floor(loc/block) * pow(10.0, gridLevel);
}

void getTriangleMosicSample(in vec2 pixLoc, in vec2 blockSize, inout MosicSample sample)
{
    mat2 inverseMat = inverseTriangleMat(blockSize);
    vec2 offset = vec2(mod(pixLoc.x, blockSize.x), mod(pixLoc.y, blockSize.y));
    // At offset.y = 0 the quotient below is undefined. Pixels of that row belong to the triangle of
    // small y.
    float smallYSide = 1.0;
    if (offset.y > 0.0) {
        smallYSide = step(blockSize.x / blockSize.y, offset.x / offset.y);
    }
    vec2 center = mix(vec2(blockSize.x * 0.32, blockSize.y * 0.625), vec2(blockSize.x * 0.675, blockSize.y * 0.375), smallYSide);
    vec2 sampleLoc = inverseMat * (pixLoc - offset + center);
    sample.colorCoords = sampleLoc;
    sample.center = restrainPosition(sampleLoc);
    sample.realUnitSize = blockSize;
}

void getComplexTriangleMosaicSample(in vec2 pixLoc, in vec2 normalBlockSize, in vec2 maxBlockSize, inout MosicSample sample)
{
    sample.texCoords = pixLoc;
    mat2 triMat = triangleMat(maxBlockSize);
    pixLoc = triMat * pixLoc;
    vec2 highGrid = triangleGrid(pixLoc, maxBlockSize, sizeLevel);
    sample.grid = triangleGrid(pixLoc, normalBlockSize, sizeLevel);
    getTriangleMosicSample(pixLoc, normalBlockSize, sample);
    float randomFactor = rand(highGrid);
    float gridLevel = sizeLevel;
    if (sizeRandomLimit > 0.0 && fastPercentFilter(randomFactor, sizeRandomLimit) > 0.0) {
        for(;gridLevel > 0.0;gridLevel -= 1.0) {
            vec2 realUnitSize = maxBlockSize / pow(2.0, sizeLevel - gridLevel);
            vec2 grid = triangleGrid(pixLoc, realUnitSize, gridLevel);
            float randomFactor = rand(grid);
            if (randomFactor >= 0.5) {
                sample.grid = grid;
                getTriangleMosicSample(pixLoc, realUnitSize, sample);
                return;
            }
        }
    }
}

vec4 getTriangleColor(in vec2 texCoords, in vec2 normalBlockSize, in vec2 maxBlockSize, in vec4 texColor)
{
    MosicSample sample;
    getComplexTriangleMosaicSample(texCoords, normalBlockSize, maxBlockSize, sample);
    mosaicColor(sample, texColor);
    dissolve(sample);
    return sample.color;
}

