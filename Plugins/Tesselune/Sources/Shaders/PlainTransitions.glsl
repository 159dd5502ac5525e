// Transitions with a hard edge: a cell goes once dissolveTransitionPercent reaches its position on
// the sweep, counted from 0 to 1.

void dissolveTransitionLinear(inout MosicSample sample)
{
    mat2 rotation = rotate(-linearTransitionAngle);
    vec2 on = rotation * vec2(0.0, 1.0);
    float maxDist = projectLength(linearTransitionCorner.xy, vec2(0.0), on) + projectLength(linearTransitionCorner.zw, vec2(0.0), on);
    float alpha = projectLength(sample.center, linearTransitionStartPoint, linearTransitionStartPoint + on) / maxDist;
    sample.color.a *= fastPercentFilter(dissolveTransitionPercent, alpha);
}

void dissolveTransitionRadioOut(inout MosicSample sample)
{
    float alpha = distance(sample.center, texSize * 0.5) / (maxSideLength);
    sample.color.a *= fastPercentFilter(dissolveTransitionPercent, alpha);
}

void dissolveTransitionRadioIn(inout MosicSample sample)
{
    float percent = 1.0 - dissolveTransitionPercent;
    float alpha = distance(sample.center, texSize * 0.5) / maxSideLength;
    sample.color.a *= 1.0 - fastPercentFilter(percent, alpha);
}

