
void mosaicColor(inout MosicSample sample, in vec4 texColor)
{
    sample.color = uniformColor(sample, texColor);
}

