// Removes the whole cell if its random value is below fadePercent or the transition has passed it.
void dissolve(inout MosicSample sample)
{
    sample.color.a *= (1.0 - fastPercentFilter(rand2(sample.center), fadePercent));
