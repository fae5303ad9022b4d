#include "testscene.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace Viewer {

namespace {

using Varnel::Rgb;

struct Vec {
    float x, y, z;
    Vec operator+(Vec o) const { return {x + o.x, y + o.y, z + o.z}; }
    Vec operator-(Vec o) const { return {x - o.x, y - o.y, z - o.z}; }
    Vec operator*(float s) const { return {x * s, y * s, z * s}; }
    float dot(Vec o) const { return x * o.x + y * o.y + z * o.z; }
    Vec unit() const { return *this * (1.f / std::sqrt(dot(*this))); }
};

struct Sphere {
    Vec centre;
    float radius;
    Rgb albedo;
    float mirror; // the share of light reflected like a mirror
};

const Sphere kSpheres[] = {
    {{-1.3f, 0.6f, 4.f}, 0.6f, {0.7f, 0.12f, 0.08f, 1.f}, 0.f},
    {{0.1f, 0.8f, 5.f}, 0.8f, {0.9f, 0.85f, 0.7f, 1.f}, 0.85f},
    {{1.5f, 0.5f, 3.6f}, 0.5f, {0.85f, 0.85f, 0.85f, 1.f}, 0.f},
};
const Vec kSun = Vec{-0.5f, 0.7f, -0.4f}.unit();
const Rgb kSunLight{4.5f, 4.1f, 3.4f, 1.f};

struct Hit {
    float distance;
    Vec point, normal;
    Rgb albedo;
    float mirror;
};

std::optional<Hit> trace(Vec origin, Vec direction) {
    std::optional<Hit> nearest;
    for (const Sphere& sphere : kSpheres) {
        const Vec to = origin - sphere.centre;
        const float b = to.dot(direction);
        const float c = to.dot(to) - sphere.radius * sphere.radius;
        const float disc = b * b - c;
        if (disc < 0.f)
            continue;
        const float t = -b - std::sqrt(disc);
        if (t > 1e-3f && (!nearest || t < nearest->distance)) {
            const Vec point = origin + direction * t;
            nearest = Hit{t, point, (point - sphere.centre) * (1.f / sphere.radius), sphere.albedo,
                          sphere.mirror};
        }
    }
    if (direction.y < 0.f) { // the ground, y = 0
        const float t = -origin.y / direction.y;
        if (t > 1e-3f && (!nearest || t < nearest->distance)) {
            const Vec point = origin + direction * t;
            const bool tile = (int(std::floor(point.x)) + int(std::floor(point.z))) % 2 == 0;
            const float grey = tile ? 0.3f : 0.2f;
            nearest = Hit{t, point, {0.f, 1.f, 0.f}, {grey, grey, grey, 1.f}, 0.f};
        }
    }
    return nearest;
}

Rgb sky(Vec direction) {
    const float up = std::max(direction.y, 0.f);
    const float sunDisk = direction.dot(kSun) > 0.9995f ? 4000.f : 0.f;
    return Rgb(0.35f + 0.25f * (1.f - up) + sunDisk, 0.55f + 0.2f * (1.f - up) + sunDisk * 0.95f,
               1.1f + sunDisk * 0.85f, 1.f);
}

Rgb shade(Vec origin, Vec direction, int depth) {
    const std::optional<Hit> hit = trace(origin, direction);
    if (!hit)
        return sky(direction);
    const float facing = std::max(hit->normal.dot(kSun), 0.f);
    const bool lit = facing > 0.f && !trace(hit->point, kSun);
    const float ambient = 0.5f + 0.5f * hit->normal.y; // the sky's light from above
    Rgb diffuse(hit->albedo.r * (ambient * 0.6f + (lit ? facing * kSunLight.r : 0.f)),
                hit->albedo.g * (ambient * 0.75f + (lit ? facing * kSunLight.g : 0.f)),
                hit->albedo.b * (ambient * 1.1f + (lit ? facing * kSunLight.b : 0.f)), 1.f);
    if (hit->mirror <= 0.f || depth > 2)
        return diffuse;
    const Vec reflected = direction - hit->normal * (2.f * direction.dot(hit->normal));
    const Rgb mirrored = shade(hit->point, reflected, depth + 1);
    const float m = hit->mirror;
    return Rgb(diffuse.r * (1 - m) + mirrored.r * m * hit->albedo.r,
               diffuse.g * (1 - m) + mirrored.g * m * hit->albedo.g,
               diffuse.b * (1 - m) + mirrored.b * m * hit->albedo.b, 1.f);
}

} // namespace

Varnel::Image renderTestScene(int width, int height) {
    Varnel::Image image({width, height, 1.f, Varnel::ImageFormat::RgbaFloat32});
    const Vec eye{0.f, 1.2f, -1.f};
    const float aspect = static_cast<float>(width) / static_cast<float>(std::max(height, 1));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            // Four samples per pixel, on a fixed grid.
            Rgb sum(0.f, 0.f, 0.f, 0.f);
            for (int s = 0; s < 4; ++s) {
                const float u = ((x + 0.25f + 0.5f * (s & 1)) / width * 2.f - 1.f) * aspect;
                const float v = 1.f - (y + 0.25f + 0.5f * (s >> 1)) / height * 2.f;
                const Rgb c = shade(eye, Vec{u * 0.6f, v * 0.6f - 0.12f, 1.f}.unit(), 0);
                sum = Rgb(sum.r + c.r, sum.g + c.g, sum.b + c.b, 1.f);
            }
            image.setRgba(x, height - 1 - y, Rgb(sum.r * 0.25f, sum.g * 0.25f, sum.b * 0.25f, 1.f));
        }
    return image;
}

} // namespace Viewer
