// point3.h - the point, vector, scale, rotation and colour triple, and the
// few vector operations the geometry code shares.
#pragma once
#include <cmath>

struct Point3 {
    double x, y, z;
};

inline Point3 Vec_Add(Point3 a, Point3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Point3 Vec_Sub(Point3 a, Point3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Point3 Vec_Scale(Point3 a, double k) { return {a.x * k, a.y * k, a.z * k}; }
inline Point3 Vec_AddScaled(Point3 a, Point3 d, double k) { return {a.x + d.x * k, a.y + d.y * k, a.z + d.z * k}; }
inline Point3 Vec_Mid(Point3 a, Point3 b) { return {(a.x + b.x) * 0.5, (a.y + b.y) * 0.5, (a.z + b.z) * 0.5}; }
inline double Vec_Dot(Point3 a, Point3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Point3 Vec_Cross(Point3 a, Point3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double Vec_Length(Point3 a) { return std::sqrt(Vec_Dot(a, a)); }
