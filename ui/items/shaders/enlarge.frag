// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#version 440

// A cubic filter of four by four pixels (R. Keys, Cubic convolution interpolation for digital image
// processing, 1981). The two in the middle of each row and column both count positively, so that
// the card's own blending of neighbours fetches them in one: nine reads instead of sixteen.

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

void main()
{
    vec2 pixel = place * size;
    vec2 left = floor(pixel - 0.5) + 0.5; // the middle of the second of the four
    vec2 t = pixel - left;

    vec2 first = depth * t * (1.0 - t) * (1.0 - t);
    vec2 second = 1.0 + t * t * ((depth + 2.0) * t - (depth + 3.0));
    vec2 fourth = depth * t * t * (1.0 - t);
    vec2 third = 1.0 - first - second - fourth;
    vec2 middle = second + third;

    vec2 a = (left - 1.0) / size;
    vec2 b = (left + third / middle) / size;
    vec2 c = (left + 2.0) / size;

    vec4 sum = (texture(picture, vec2(a.x, a.y)) * first.x
                + texture(picture, vec2(b.x, a.y)) * middle.x
                + texture(picture, vec2(c.x, a.y)) * fourth.x) * first.y
        + (texture(picture, vec2(a.x, b.y)) * first.x
           + texture(picture, vec2(b.x, b.y)) * middle.x
           + texture(picture, vec2(c.x, b.y)) * fourth.x) * middle.y
        + (texture(picture, vec2(a.x, c.y)) * first.x
           + texture(picture, vec2(b.x, c.y)) * middle.x
           + texture(picture, vec2(c.x, c.y)) * fourth.x) * fourth.y;
    sum.a = clamp(sum.a, 0.0, 1.0);
    color = vec4(clamp(sum.rgb, 0.0, sum.a), sum.a) * opacity;
}
