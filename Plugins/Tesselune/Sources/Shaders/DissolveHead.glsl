// Removes the cell, whole, where its random value or the transition says so.
void dissolve(inout MosicSample sample)
{
    sample.color.a *= (1.0 - fastPercentFilter(rand2(sample.center), fadePercent));
