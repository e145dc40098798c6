// SPDX-License-Identifier: MIT
#include "picture/scene/traced_scene.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>
#include <string>

#include <embree3/rtcore.h>

#include "picture/view/vectors.h"

namespace picture {

namespace {

/// The last error message of the ray tracer on this thread. An array, since memory may have run
/// out.
thread_local std::array<char, 160> reason{};

void keep_reason(void* /*user_data*/, RTCError /*error*/, const char* text) noexcept
{
    const std::size_t length = std::min(std::strlen(text), reason.size() - 1);
    std::copy_n(text, length, reason.begin());
    reason[length] = '\0';
}

/// Throws the exception for an error code, if it is an error.
void check(RTCError error)
{
    if (error == RTC_ERROR_CANCELLED)
        throw SceneCancelled();
    if (error == RTC_ERROR_OUT_OF_MEMORY)
        throw std::bad_alloc();
    if (error != RTC_ERROR_NONE)
        throw TracerError(std::string("the ray tracer failed: ") +
                          (reason[0] != '\0' ? reason.data() : "it gives no reason") +
                          "; it needs threads and more memory than the mesh alone");
}

/// The ray tracer's device: one per process, since it owns threads. Never destroyed, since scenes
/// may be destroyed in any order.
RTCDevice device()
{
    static const RTCDevice shared = [] {
        const RTCDevice made = rtcNewDevice(nullptr);
        if (made == nullptr) {
            check(rtcGetDeviceError(nullptr));
            throw TracerError("the ray tracer does not start");
        }
        rtcSetDeviceErrorFunction(made, keep_reason, nullptr);
        return made;
    }();
    return shared;
}

/// Throws if the device has reported an error since the last call.
void check_device() { check(rtcGetDeviceError(device())); }

template <typename T>
void share(RTCGeometry geometry, RTCBufferType type, RTCFormat format, const std::vector<T>& values,
           std::size_t count)
{
    rtcSetSharedGeometryBuffer(geometry, type, 0, format, values.data(), 0, sizeof(T), count);
}

RTCGeometry face_geometry(const ScenePart& part)
{
    RTCGeometry geometry = rtcNewGeometry(device(), RTC_GEOMETRY_TYPE_TRIANGLE);
    share(geometry, RTC_BUFFER_TYPE_VERTEX, RTC_FORMAT_FLOAT3, part.points, part.points.size() - 1);
    share(geometry, RTC_BUFFER_TYPE_INDEX, RTC_FORMAT_UINT3, part.triangles, part.triangles.size());
    return geometry;
}

RTCGeometry line_geometry(const ScenePart& part)
{
    RTCGeometry geometry = rtcNewGeometry(device(), RTC_GEOMETRY_TYPE_ROUND_LINEAR_CURVE);
    share(geometry, RTC_BUFFER_TYPE_VERTEX, RTC_FORMAT_FLOAT4, part.line_points,
          part.line_points.size());
    share(geometry, RTC_BUFFER_TYPE_INDEX, RTC_FORMAT_UINT, part.lines, part.lines.size());
    return geometry;
}

RTCGeometry dot_geometry(const ScenePart& part)
{
    RTCGeometry geometry = rtcNewGeometry(device(), RTC_GEOMETRY_TYPE_SPHERE_POINT);
    share(geometry, RTC_BUFFER_TYPE_VERTEX, RTC_FORMAT_FLOAT4, part.dots, part.dots.size());
    return geometry;
}

/// Progress callback of the ray tracer; false cancels the build.
bool goes_on(void* cancel, double /*done*/) noexcept
{
    return !*static_cast<const std::atomic<bool>*>(cancel);
}

/// Above this number of triangles the tree is built with low quality: faster, and smaller.
constexpr std::size_t many_triangles = 4'000'000;

} // namespace

TracedScene::TracedScene(std::span<const SceneLayer> layers, const std::atomic<bool>* cancel)
{
    place(layers);
    parts_.reserve(layers.size());
    SurfaceIndex surfaces;
    for (const SceneLayer& layer : layers) {
        surfaces.set_document(layer);
        parts_.push_back(make_part(layer, surfaces, placement_, cancel));
    }
    build(cancel);
}

TracedScene::~TracedScene()
{
    if (scene_ != nullptr)
        rtcReleaseScene(scene_);
}

/// Computes the placement from the bounds of everything shown.
void TracedScene::place(std::span<const SceneLayer> layers)
{
    for (const SceneLayer& layer : layers) {
        const std::vector<bool> shown = shown_points(layer);
        for (std::size_t i = 0; i < shown.size(); ++i) {
            const mesh::Vec3& point = layer.layer->points[i];
            if (!shown[i] || !is_finite(point))
                continue;
            if (!bounds_)
                bounds_ = mesh::Bounds{point, point};
            bounds_->min = {std::min(bounds_->min.x, point.x), std::min(bounds_->min.y, point.y),
                            std::min(bounds_->min.z, point.z)};
            bounds_->max = {std::max(bounds_->max.x, point.x), std::max(bounds_->max.y, point.y),
                            std::max(bounds_->max.z, point.z)};
        }
    }
    if (!bounds_)
        return;
    const mesh::Vec3 half_low = bounds_->min * 0.5; // halved first: the sum may be too large
    const mesh::Vec3 half_high = bounds_->max * 0.5;
    placement_.centre = half_low + half_high;
    const mesh::Vec3 half = half_high - half_low;
    const double largest = std::max({half.x, half.y, half.z});
    placement_.scale = largest > 0.0 ? largest : 0.5;
}

void TracedScene::build(const std::atomic<bool>* cancel)
{
    std::size_t triangles = 0;
    for (const ScenePart& part : parts_)
        triangles += part.triangles.size();
    const bool many = triangles > many_triangles;
    // Releasing a scene after a failed build terminates the program in the ray tracer. So take
    // ownership only on success.
    const RTCScene scene = rtcNewScene(device());
    check_device();
    if (many)
        rtcSetSceneFlags(scene, RTC_SCENE_FLAG_COMPACT);
    rtcSetSceneBuildQuality(scene, RTC_BUILD_QUALITY_MEDIUM);
    if (cancel != nullptr)
        rtcSetSceneProgressMonitorFunction(scene, goes_on, const_cast<std::atomic<bool>*>(cancel));
    const auto attach = [&](RTCGeometry geometry, std::uint32_t part, Shape shape) {
        rtcCommitGeometry(geometry);
        rtcAttachGeometry(scene, geometry);
        rtcReleaseGeometry(geometry);
        geometries_.push_back({part, shape});
    };
    for (std::uint32_t i = 0; i < parts_.size(); ++i) {
        if (!parts_[i].triangles.empty())
            attach(face_geometry(parts_[i]), i, Shape::triangle);
        if (!parts_[i].lines.empty())
            attach(line_geometry(parts_[i]), i, Shape::line);
        if (!parts_[i].dots.empty())
            attach(dot_geometry(parts_[i]), i, Shape::dot);
    }
    check_device();
    rtcCommitScene(scene);
    rtcSetSceneProgressMonitorFunction(scene, nullptr, nullptr); // `cancel` is the caller's
    try {
        check_device();
    } catch (const SceneCancelled&) {
        rtcReleaseScene(scene);
        throw;
    }
    scene_ = scene;
}

std::optional<Hit> TracedScene::trace(const Ray& ray) const noexcept
{
    if (geometries_.empty())
        return std::nullopt;
    // Start the ray just in front of the scene, independent of the viewer's distance, to keep
    // precision.
    constexpr double reach = 2.0; // more than the scene's corners are from its middle
    const double scale = placement_.scale;
    const mesh::Vec3 origin = (ray.origin - placement_.centre) * (1.0 / scale);
    const double ahead = -dot(origin, ray.direction) - reach;
    const double start = ray.endless ? ahead : std::max(0.0, ahead);
    const Float3 from = to_single(origin + ray.direction * start);
    const Float3 direction = to_single(ray.direction);

    RTCIntersectContext context{};
    rtcInitIntersectContext(&context);
    RTCRayHit query{};
    query.ray = {from.x,      from.y,      from.z,
                 0.0F,        direction.x, direction.y,
                 direction.z, 0.0F,        std::numeric_limits<float>::infinity(),
                 ~0U,         0,           0};
    query.hit.geomID = RTC_INVALID_GEOMETRY_ID;
    rtcIntersect1(scene_, &context, &query);
    if (query.hit.geomID == RTC_INVALID_GEOMETRY_ID)
        return std::nullopt;

    const Geometry& geometry = geometries_[query.hit.geomID];
    Hit hit;
    hit.part = geometry.part;
    hit.shape = geometry.shape;
    hit.number = query.hit.primID;
    hit.u = query.hit.u;
    hit.v = query.hit.v;
    hit.distance = (start + static_cast<double>(query.ray.tfar)) * scale;
    hit.normal = normalized(Float3{query.hit.Ng_x, query.hit.Ng_y, query.hit.Ng_z});
    if (dot(hit.normal, direction) > 0.0F)
        hit.normal = -hit.normal;
    if (hit.shape == Shape::triangle) { // nearer to the surface than along the ray
        const ScenePart& part = parts_[hit.part];
        const auto& [a, b, c] = part.triangles[hit.number];
        hit.place = part.points[a] * (1.0F - hit.u - hit.v) + part.points[b] * hit.u +
                    part.points[c] * hit.v;
    } else {
        hit.place = from + direction * query.ray.tfar;
    }
    return hit;
}

bool TracedScene::is_blocked(const Float3& place, const Float3& normal,
                             const Float3& direction) const noexcept
{
    constexpr float clearance = 2e-6F; // some times the rounding of a place in the scene
    const Float3 from = place + normal * clearance;
    RTCIntersectContext context{};
    rtcInitIntersectContext(&context);
    RTCRay query{from.x,      from.y,      from.z,
                 0.0F,        direction.x, direction.y,
                 direction.z, 0.0F,        std::numeric_limits<float>::infinity(),
                 ~0U,         0,           0};
    rtcOccluded1(scene_, &context, &query);
    return query.tfar < 0.0F;
}

std::uint32_t TracedScene::polygon_of(const Hit& hit) const noexcept
{
    const ScenePart& part = parts_[hit.part];
    switch (hit.shape) {
    case Shape::triangle:
        return part.triangle_polygons[hit.number];
    case Shape::line:
        return part.line_polygons[hit.number];
    case Shape::dot:
        return part.dot_polygons[hit.number];
    }
    return no_polygon;
}

mesh::Vec3 TracedScene::world_place(const Float3& place) const noexcept
{
    return placement_.centre + to_double(place) * placement_.scale;
}

} // namespace picture
