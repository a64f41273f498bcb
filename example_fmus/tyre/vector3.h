/**
 * @file vector3.h
 * @brief Vectors in space, in the inertial frame: x forward, y to the left, z up.
 */
#pragma once

#include <cmath>

struct Vector3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline Vector3 operator+(const Vector3& a, const Vector3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

inline Vector3 operator*(double factor, const Vector3& a) {
    return {factor * a.x, factor * a.y, factor * a.z};
}

inline double dot(const Vector3& a, const Vector3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline Vector3 cross(const Vector3& a, const Vector3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/** @p a with length 1; the length must not be 0. */
inline Vector3 normalised(const Vector3& a) {
    return (1.0 / std::sqrt(dot(a, a))) * a;
}
