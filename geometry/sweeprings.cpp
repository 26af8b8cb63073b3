#include "geometry/sweeprings.h"

#include "geometry/directions.h"
#include "geometry/rotation.h"
#include "geometry/shapegeometry.h"
#include "geometry/sideplane.h"
#include "geometry/vectors.h"
#include "scene/model.h"

namespace korvane
{

Places DropStillSteps(const Places& path)
{
    Places steps;
    for (const Place& point : path) {
        if (steps.empty() || point != steps.back()) {
            steps.push_back(point);
        }
    }
    return steps;
}

Place GetDirection(const Place& from, const Place& to)
{
    Place direction;
    Store(ToVector(to.data()) - ToVector(from.data()), direction.data());
    Normalise(direction.data());
    return direction;
}

Places GetDirectionsOfPath(const Places& path)
{
    Places directions;
    const std::size_t last = path.size() - 1;
    for (std::size_t i = 0; i <= last; i++) {
        directions.push_back(GetDirection(path[i == 0 ? 0 : i - 1], path[i == last ? i : i + 1]));
    }
    return directions;
}

Places GetDirectionsOfLoop(const Places& path)
{
    Places directions;
    const std::size_t number = path.size() - 1;
    for (std::size_t i = 0; i < number; i++) {
        directions.push_back(GetDirection(path[i == 0 ? number - 1 : i - 1], path[i + 1]));
    }
    return directions;
}

Places GetProfileOfSide(const Side* side)
{
    const Block<float[]> center = GetCenterOfSide(side);
    Places profile(std::size_t(side->pointnumber));
    for (int k = 0; k < side->pointnumber; k++) {
        Store(ToVector(GetPointOfSide(side, k)) - ToVector(center.get()),
              profile[std::size_t(k)].data());
    }
    return profile;
}

static bool AreParallel(const Place& a, const Place& b)
{
    constexpr double paralleltolerance = 1e-6; // the square below which VectorRotate sees no angle
    const float origin[3] = {0, 0, 0};
    return GetSquare(GetCross(origin, a.data(), b.data())) < paralleltolerance;
}

static bool AreOpposite(const Place& a, const Place& b)
{
    return AreParallel(a, b) && double(a[0]) * b[0] + double(a[1]) * b[1] + double(a[2]) * b[2] < 0;
}

// The rotation that carries the sweep's start onto the direction of ring i, as its three columns. A
// half turn could go any way round: it goes by way of the last earlier direction that tells one, so
// that the rings before and after it are not twisted against each other.
static void GetTurn(const Sweep& sweep, int i, float turn[3][3])
{
    for (int c = 0; c < 3; c++) {
        for (int r = 0; r < 3; r++) {
            turn[c][r] = c == r ? 1.0F : 0.0F;
        }
    }
    const Place& direction = sweep.directions[std::size_t(i)];
    const float* from = sweep.along.data();
    if (AreOpposite(sweep.along, direction)) {
        for (int j = i - 1; j >= 0; j--) {
            const Place& way = sweep.directions[std::size_t(j)];
            if (!AreParallel(sweep.along, way)) {
                VectorRotate(turn, from, way.data());
                from = way.data();
                break;
            }
        }
    }
    VectorRotate(turn, from, direction.data());
}

Places PlaceRing(const Sweep& sweep, int i)
{
    float turn[3][3];
    GetTurn(sweep, i, turn);
    const Place& center = sweep.path[std::size_t(i)];
    Places ring = sweep.profile;
    for (Place& point : ring) {
        const Vector p = ToVector(point.data());
        for (std::size_t r = 0; r < 3; r++) {
            point[r] = float(p[0] * turn[0][r] + p[1] * turn[1][r] + p[2] * turn[2][r] + center[r]);
        }
    }
    return ring;
}

static double GetSumOfDistances(const Places& ring, const Places& target, std::size_t shift)
{
    double sum = 0;
    for (std::size_t j = 0; j < ring.size(); j++) {
        sum += GetDistanceOfTwoPoints(ring[j].data(), target[(j + shift) % target.size()].data());
    }
    return sum;
}

int FindShift(const Places& ring, const Places& target)
{
    std::size_t best = 0;
    double bestsum = GetSumOfDistances(ring, target, 0);
    for (std::size_t shift = 1; shift < target.size(); shift++) {
        const double sum = GetSumOfDistances(ring, target, shift);
        if (sum < bestsum) { // strictly smaller: the lowest of equal shifts stays
            best = shift;
            bestsum = sum;
        }
    }
    return int(best);
}

} // namespace korvane
