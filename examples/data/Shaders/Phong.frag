#version 330 core
// One point light: ambient, diffuse and specular terms (B. T. Phong, 1975).
in vec3 worldPosition;
in vec3 worldNormal;

uniform vec3 lightPosition;
uniform vec3 eyePosition;
uniform vec3 surfaceColour;

out vec4 fragment;

void main() {
    vec3 n = normalize(worldNormal);
    vec3 l = normalize(lightPosition - worldPosition);
    vec3 v = normalize(eyePosition - worldPosition);
    float diffuse = max(dot(n, l), 0.0);
    float specular = pow(max(dot(reflect(-l, n), v), 0.0), 32.0);
    fragment = vec4(surfaceColour * (0.1 + diffuse) + vec3(0.4 * specular), 1.0);
}
