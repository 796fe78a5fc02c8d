// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#version 440

// The same filter as where pictures are enlarged, made as wide as the pixels of the window are in
// the picture: up to twice, so that it reaches over eight pixels each way.

const float depth = -0.7;

layout(location = 0) in vec2 place;
layout(location = 0) out vec4 color;

layout(std140, binding = 0) uniform Uniforms {
    mat4 matrix;
    vec2 size;
    vec2 scale;
    float opacity;
};

layout(binding = 1) uniform sampler2D picture;

vec4 cubic(vec4 x)
{
    x = min(abs(x), 2.0);
    vec4 near = 1.0 + x * x * ((depth + 2.0) * x - (depth + 3.0));
    vec4 far = depth * (x - 1.0) * (x - 2.0) * (x - 2.0);
    return mix(near, far, step(1.0, x));
}

vec4 four(float x, float y, vec4 weights)
{
    return texture(picture, vec2(x, y) / size) * weights.x
        + texture(picture, vec2(x + 1.0, y) / size) * weights.y
        + texture(picture, vec2(x + 2.0, y) / size) * weights.z
        + texture(picture, vec2(x + 3.0, y) / size) * weights.w;
}

void main()
{
    const vec4 inOrder = vec4(0.0, 1.0, 2.0, 3.0);
    vec2 narrow = min(scale, 1.0);
    vec2 pixel = place * size;
    vec2 first = floor(pixel - 0.5 - 2.0 / narrow) + 1.5; // the middle of it

    vec4 left = cubic((first.x + inOrder - pixel.x) * narrow.x);
    vec4 right = cubic((first.x + inOrder + 4.0 - pixel.x) * narrow.x);
    vec4 sum = vec4(0.0);
    float weights = 0.0;
    for (int row = 0; row < 8; ++row) {
        float y = first.y + float(row);
        float weight = cubic(vec4((y - pixel.y) * narrow.y)).x;
        sum += (four(first.x, y, left) + four(first.x + 4.0, y, right)) * weight;
        weights += weight;
    }
    sum /= weights * dot(left + right, vec4(1.0));
    sum.a = clamp(sum.a, 0.0, 1.0);
    color = vec4(clamp(sum.rgb, 0.0, sum.a), sum.a) * opacity;
}
