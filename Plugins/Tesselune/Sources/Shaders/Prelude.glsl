#version 330
in vec2 uv;

uniform sampler2D videoTexture;
uniform float multiplier16bit;
uniform vec2 texSize;
uniform float sizeLevel;
uniform float sizeRandomLimit;
uniform float sizeRandomSeed;
uniform vec2 maxBlockSize;
uniform vec2 normalBlockSize;
uniform float affectPercent;
uniform float invertAffect;
uniform float fadePercent;
uniform float dissolveRandomSeed;
uniform float dissolveFeather;
uniform float dissolveTransitionPercent;
uniform float linearTransitionAngle;
uniform vec2 linearTransitionStartPoint;
uniform vec4 linearTransitionCorner;
uniform float maxSideLength;
uniform vec4 customColor1;
uniform vec4 customColor2;
uniform vec4 customColor3;
uniform float useAlpha;

out vec4 colourOut;

// The cell that a pixel belongs to. Coordinates are in pixels; the origin is the first texel of the
// first row.
struct MosicSample {
    vec2 texCoords;
    vec2 colorCoords;
    vec2 grid;
    vec4 color;
    vec2 center;
    vec2 realUnitSize;
};

mat2 rotate(float a)
{
    return mat2(cos(a),-sin(a), sin(a), cos(a));
}

// Returns the distance of P from the line through P0 and P1.
float projectLength(vec2 P, vec2 P0, vec2 P1)
{
    vec2 v = P1 - P0;
    vec2 w = P - P0;
    float b = dot(w, v) / dot(v, v);
    vec2 Pb = P0 + b * v;
    return distance(P, Pb);
}

// Paints a white disc of 3 pixels radius on the cell's reference point.
void paintPoint(inout MosicSample sample, in vec2 texCoords)
{
    sample.color = mix(vec4(1.0), sample.color, step(3.0, distance(sample.texCoords, sample.center)));
}

vec2 restrainPosition(in vec2 pos)
{
    return vec2(clamp(pos.x, 1.0, texSize.x - 1.0), clamp(pos.y, 1.0, texSize.y - 1.0));
}

// Converts the host's ARGB to RGBA.
vec4 swapChannel(in vec4 eColor)
{
    return vec4(eColor.g, eColor.b, eColor.a, eColor.r);
}

float nrand( vec2 n )
{
    return fract(sin(dot(n.xy, vec2(12.9898, 78.233)))* 43758.5453);
}

float rand(vec2 co)
{
    return nrand( co + 0.07*fract(0.12 * sizeRandomSeed) );
}

float rand2(vec2 co)
{
    return nrand( co + 0.07*fract(0.34 * dissolveRandomSeed) );
}

float rand3(vec2 co)
{
    return nrand( co + 0.07*fract(0.56) );
}

// Returns 1.0 if value is below percent, else 0.0.
float fastPercentFilter(float value, float percent)
{
    return 1.0 - step(percent, value);
}

float fastPercentFilterSmooth(float value, float percent, float smoothValue)
{
    return 1.0 - smoothstep (percent, percent + smoothValue, value);
}

vec4 uniformColor(in MosicSample sample, in vec4 baseColor)
{
    return swapChannel(texture(videoTexture, sample.colorCoords / texSize));
}

vec4 grdientHColor(in MosicSample sample, in vec4 baseColor)
{
    return swapChannel(texture(videoTexture, sample.colorCoords / texSize));
}

vec4 grdientBColor(in MosicSample sample, in vec4 baseColor)
{
    return swapChannel(texture(videoTexture, sample.colorCoords / texSize));
}

vec4 custom1Color(in MosicSample sample, in vec4 baseColor)
{
    return vec4(customColor1.rgb, baseColor.a);
}

vec4 custom2Color(in MosicSample sample, in vec4 baseColor)
{
    return vec4(customColor2.rgb, baseColor.a);
}

vec4 custom3Color(in MosicSample sample, in vec4 baseColor)
{
    return vec4(customColor3.rgb, baseColor.a);
}

