#version 330 core
// Passes position and normal on in world space.
layout(location = 0) in vec3 position;
layout(location = 1) in vec3 normal;

uniform mat4 model;
uniform mat4 viewProjection;

out vec3 worldPosition;
out vec3 worldNormal;

void main() {
    vec4 world = model * vec4(position, 1.0);
    worldPosition = world.xyz;
    worldNormal = mat3(transpose(inverse(model))) * normal;
    gl_Position = viewProjection * world;
}
