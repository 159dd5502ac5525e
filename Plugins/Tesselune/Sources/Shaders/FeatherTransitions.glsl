// Transitions with a ragged edge: within a band of dissolveFeather pixels, a cell's random value
// decides when the cell is removed.

void dissolveTransitionLinear(inout MosicSample sample)
{
    mat2 rotation = rotate(-linearTransitionAngle);
    vec2 on = rotation * vec2(0.0, 1.0);
    float maxDist = projectLength(linearTransitionCorner.xy, vec2(0.0), on) + projectLength(linearTransitionCorner.zw, vec2(0.0), on);
    float fadeFeatherPercent =  dissolveFeather / (maxDist + dissolveFeather);
    float alpha = projectLength(sample.center, linearTransitionStartPoint, linearTransitionStartPoint + on) / ((maxDist + dissolveFeather));
    float offset = alpha - dissolveTransitionPercent;
    offset = fastPercentFilter(rand2(sample.center) * fadeFeatherPercent, - offset);
    sample.color.a *= (1.0 - offset);
}

void dissolveTransitionRadioOut(inout MosicSample sample)
{
    float fadeFeatherPercent =  dissolveFeather / (maxSideLength + dissolveFeather);
    float alpha = distance(sample.center, texSize * 0.5) / ((maxSideLength + dissolveFeather));
    float offset = alpha - dissolveTransitionPercent;
    offset = fastPercentFilter(rand2(sample.center) * fadeFeatherPercent, -offset);
    sample.color.a *= (1.0 - offset);
}

void dissolveTransitionRadioIn(inout MosicSample sample)
{
    float percent = 1.0 - dissolveTransitionPercent;
    float fadeFeatherPercent =  dissolveFeather / (maxSideLength + dissolveFeather);
    float alpha = distance(sample.center, texSize * 0.5) / ((maxSideLength + dissolveFeather));
    float offset = alpha - percent;
    offset = fastPercentFilter(rand2(sample.center) * fadeFeatherPercent, -offset);
    sample.color.a *= (offset);
}

