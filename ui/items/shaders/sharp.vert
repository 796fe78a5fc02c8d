// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#version 440

layout(location = 0) in vec4 position;
layout(location = 1) in vec2 texturePosition;
layout(location = 0) out vec2 place;

layout(std140, binding = 0) uniform Uniforms {
    mat4 matrix;
    vec2 size;
    vec2 scale;
    float opacity;
};

void main()
{
    place = texturePosition;
    gl_Position = matrix * position;
}
