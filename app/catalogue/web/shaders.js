// How parts are drawn: softly lit faces, thin dark edges, a veil where the chosen part is covered, and numbers
// instead of colours for finding what is under the pointer.

import {GLSL3, GreaterDepth, NoBlending, ShaderMaterial, DoubleSide} from 'three';

const kPlace = `
attribute mat4 place;
attribute vec4 tint;
attribute float number;
vec4 onScreen() { return projectionMatrix * viewMatrix * place * vec4(position, 1.0); }
`;

const kLitVertex = `${kPlace}
varying vec3 vNormal;
varying vec4 vTint;
void main() {
    mat3 m = mat3(place);
    // Cofactors turn normals rightly whatever the place does to lengths.
    mat3 turn = mat3(cross(m[1], m[2]), cross(m[2], m[0]), cross(m[0], m[1]));
    vNormal = mat3(viewMatrix) * (turn * normal);
    vTint = tint;
    gl_Position = onScreen();
}`;

const kLitFragment = `
varying vec3 vNormal;
varying vec4 vTint;
void main() {
    vec3 n = normalize(vNormal);
    if (n.z < 0.0) n = -n;
    float light = 0.5 + 0.5 * dot(n, normalize(vec3(-0.4, 0.65, 0.65)));
    float shine = pow(max(dot(n, normalize(vec3(-0.2, 0.35, 0.91))), 0.0), 40.0);
    gl_FragColor = vec4(vTint.rgb * mix(0.42, 1.06, light) + 0.06 * shine, 1.0);
}`;

const kEdgeVertex = `${kPlace}
varying vec4 vTint;
void main() {
    vTint = tint;
    gl_Position = onScreen();
}`;

const kEdgeFragment = `
varying vec4 vTint;
void main() { gl_FragColor = vec4(vTint.rgb * 0.28, 1.0); }`;

const kVeilFragment = `
varying vec4 vTint;
void main() {
    if (vTint.a < 0.5) discard;
    gl_FragColor = vec4(vTint.rgb, 0.38);
}`;

const kNumberVertex = `${kPlace}
flat out float vNumber;
void main() {
    vNumber = number;
    gl_Position = onScreen();
}`;

// Two pictures, of numbers and of depths, in three bytes each: all that single precision counts exactly.
const kNumberFragment = `
flat in float vNumber;
layout(location = 0) out vec4 numberBytes;
layout(location = 1) out vec4 depthBytes;
vec4 threeBytes(float value) {
    return vec4(floor(value / 65536.0), mod(floor(value / 256.0), 256.0), mod(value, 256.0), 255.0) / 255.0;
}
void main() {
    numberBytes = threeBytes(vNumber);
    depthBytes = threeBytes(floor(gl_FragCoord.z * 16777215.0));
}`;

export function makeMaterials() {
    return {
        faces: new ShaderMaterial({
            vertexShader: kLitVertex, fragmentShader: kLitFragment, side: DoubleSide,
            polygonOffset: true, polygonOffsetFactor: 1, polygonOffsetUnits: 1,
        }),
        edges: new ShaderMaterial({vertexShader: kEdgeVertex, fragmentShader: kEdgeFragment}),
        veil: new ShaderMaterial({
            vertexShader: kEdgeVertex, fragmentShader: kVeilFragment, side: DoubleSide, transparent: true,
            depthFunc: GreaterDepth, depthWrite: false,
        }),
        numbers: new ShaderMaterial({
            vertexShader: kNumberVertex, fragmentShader: kNumberFragment, glslVersion: GLSL3, side: DoubleSide,
            blending: NoBlending,
        }),
    };
}
