#pragma once

/// The programs of the viewport for the graphics card, in what OpenGL 2.1 and ES 2 have in common.
namespace SceneShaders {

/// Faces, lit from the eye and a little from above, alike from both sides.
constexpr const char *shadedVertex = R"(
attribute highp vec3 position;
attribute highp vec3 normal;
attribute lowp vec4 color;
uniform highp mat4 matrix;
uniform highp mat4 toView;
uniform highp mat3 normalToView;
varying highp vec3 place;
varying highp vec3 facing;
varying lowp vec4 shade;
void main()
{
    place = (toView * vec4(position, 1.0)).xyz;
    facing = normalToView * normal;
    shade = color;
    gl_Position = matrix * vec4(position, 1.0);
}
)";

constexpr const char *shadedFragment = R"(
varying highp vec3 place;
varying highp vec3 facing;
varying lowp vec4 shade;
uniform highp vec3 up;
void main()
{
    highp vec3 toEye = normalize(-place);
    highp vec3 unit = normalize(facing);
    if (dot(unit, toEye) < 0.0)
        unit = -unit;
    highp float light = 0.42 + 0.46 * dot(unit, toEye) + 0.12 * dot(unit, up);
    gl_FragColor = vec4(shade.rgb * light, shade.a);
}
)";

/// Lines and areas in one colour, or in colours by corner.
constexpr const char *plainVertex = R"(
attribute highp vec3 position;
attribute lowp vec4 color;
uniform highp mat4 matrix;
varying lowp vec4 shade;
void main()
{
    shade = color;
    gl_Position = matrix * vec4(position, 1.0);
}
)";

constexpr const char *plainFragment = R"(
varying lowp vec4 shade;
void main()
{
    gl_FragColor = shade;
}
)";

/// A line around white shapes: wherever one is near and none is.
constexpr const char *outlineVertex = R"(
attribute highp vec2 position;
varying highp vec2 at;
void main()
{
    at = position * 0.5 + 0.5;
    gl_Position = vec4(position, 0.0, 1.0);
}
)";

constexpr const char *outlineFragment = R"(
varying highp vec2 at;
uniform sampler2D shapes;
uniform highp vec2 reach;
uniform lowp vec4 color;
void main()
{
    lowp float here = texture2D(shapes, at).r;
    highp vec2 slant = reach * 0.7071;
    lowp float near = texture2D(shapes, at + vec2(reach.x, 0.0)).r;
    near = max(near, texture2D(shapes, at - vec2(reach.x, 0.0)).r);
    near = max(near, texture2D(shapes, at + vec2(0.0, reach.y)).r);
    near = max(near, texture2D(shapes, at - vec2(0.0, reach.y)).r);
    near = max(near, texture2D(shapes, at + slant).r);
    near = max(near, texture2D(shapes, at - slant).r);
    near = max(near, texture2D(shapes, at + vec2(slant.x, -slant.y)).r);
    near = max(near, texture2D(shapes, at + vec2(-slant.x, slant.y)).r);
    gl_FragColor = vec4(color.rgb, near * (1.0 - here));
}
)";

/// A picture in the middle of the viewport.
constexpr const char *plateVertex = R"(
attribute highp vec2 position;
uniform highp vec2 share;
varying highp vec2 at;
void main()
{
    at = position * 0.5 + 0.5;
    gl_Position = vec4(position * share, 0.0, 1.0);
}
)";

constexpr const char *plateFragment = R"(
varying highp vec2 at;
uniform sampler2D picture;
uniform lowp float opacity;
void main()
{
    lowp vec4 color = texture2D(picture, at);
    gl_FragColor = vec4(color.rgb, color.a * opacity);
}
)";

} // namespace SceneShaders
