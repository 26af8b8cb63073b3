#include "tests/support/camera.h"

#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <algorithm>
#include <cmath>

namespace korvane::testing
{

static const MainView startview = mainview; // as it stands before anything has run

void StartView()
{
    StartEmptyScene();
    mainview = startview;
    width = 600;
    height = 600;
    std::fill_n(mouse, 3, 0.0F);
    std::fill_n(gmouse, 3, 0.0F);
    activepointer = nullptr;
    camposition = cameraframes;
    rdstate = 0;
}

int AddToView(OwnedShape shape)
{
    const int index = AddToScene(std::move(shape), "shape");
    TransferAllShape();
    SetActives();
    ChangeActives();
    return index;
}

Columns ToColumns(const float rotation[9])
{
    Columns columns;
    for (std::size_t i = 0; i < 3; i++) {
        std::copy_n(rotation + 3 * i, 3, columns[i].data());
    }
    return columns;
}

void SetRotation(const Columns& columns)
{
    for (std::size_t i = 0; i < 3; i++) {
        std::copy_n(columns[i].data(), 3, mainview.rotation + 3 * i);
    }
    std::copy_n(mainview.rotation, 9, mainview.freerotation);
}

const CameraFrame& LastFrame()
{
    return camtable[cameraframes - 1];
}

Columns RotationOfFrame(int frame)
{
    return ToColumns(camtable[frame].rotation);
}

Columns LastRotation()
{
    return RotationOfFrame(cameraframes - 1);
}

void PlayFlight()
{
    while (camposition != cameraframes) {
        PlayCamera();
    }
}

Columns MakeTurn(const Vector& axis, double angle)
{
    const double length = std::hypot(axis[0], axis[1], axis[2]);
    const double x = axis[0] / length;
    const double y = axis[1] / length;
    const double z = axis[2] / length;
    const double s = std::sin(angle);
    const double c = std::cos(angle);
    const double d = 1 - c;
    return {{{float(x * x * d + c), float(y * x * d + z * s), float(z * x * d - y * s)},
             {float(x * y * d - z * s), float(y * y * d + c), float(z * y * d + x * s)},
             {float(x * z * d + y * s), float(y * z * d - x * s), float(z * z * d + c)}}};
}

Vector Apply(const Columns& turn, const Vector& v)
{
    Vector result;
    for (std::size_t i = 0; i < 3; i++) {
        result[i] =
            double(turn[0][i]) * v[0] + double(turn[1][i]) * v[1] + double(turn[2][i]) * v[2];
    }
    return result;
}

Columns Compose(const Columns& outer, const Columns& inner)
{
    Columns result;
    for (std::size_t i = 0; i < 3; i++) {
        const Vector v =
            Apply(outer, {double(inner[i][0]), double(inner[i][1]), double(inner[i][2])});
        result[i] = {float(v[0]), float(v[1]), float(v[2])};
    }
    return result;
}

Columns MakeInverse(const Columns& turn)
{
    return {{{turn[0][0], turn[1][0], turn[2][0]},
             {turn[0][1], turn[1][1], turn[2][1]},
             {turn[0][2], turn[1][2], turn[2][2]}}};
}

// The squared distance of two rotations is 8 sin(angle/2)^2, which is exact for small angles too.
double GetTurnAngle(const Columns& a, const Columns& b)
{
    double square = 0;
    for (std::size_t i = 0; i < 3; i++) {
        for (std::size_t k = 0; k < 3; k++) {
            const double difference = double(a[i][k]) - double(b[i][k]);
            square += difference * difference;
        }
    }
    return 2 * std::asin(std::min(1.0, std::sqrt(square / 8)));
}

double GetAngle(const Vector& a, const Vector& b)
{
    const Vector cross = {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2],
                          a[0] * b[1] - a[1] * b[0]};
    return std::atan2(std::hypot(cross[0], cross[1], cross[2]),
                      a[0] * b[0] + a[1] * b[1] + a[2] * b[2]);
}

Vector GetRandomDirection(std::mt19937& random)
{
    std::normal_distribution<double> normal;
    const Vector v = {normal(random), normal(random), normal(random)};
    const double length = std::hypot(v[0], v[1], v[2]);
    return {v[0] / length, v[1] / length, v[2] / length};
}

// A random unit quaternion (x, y, z, w) is a rotation by 2 acos(w) about (x, y, z).
Columns GetRandomRotation(std::mt19937& random)
{
    std::normal_distribution<double> normal;
    const Vector axis = {normal(random), normal(random), normal(random)};
    const double w = normal(random);
    return MakeTurn(axis, 2 * std::atan2(std::hypot(axis[0], axis[1], axis[2]), w));
}

::testing::AssertionResult AreColumns(const Columns& actual, const Columns& expected,
                                      double tolerance)
{
    for (std::size_t i = 0; i < 3; i++) {
        for (std::size_t k = 0; k < 3; k++) {
            if (!(std::fabs(double(actual[i][k]) - double(expected[i][k])) <= tolerance)) {
                return ::testing::AssertionFailure()
                       << "component " << k << " of column " << i << " is " << actual[i][k]
                       << " and not " << expected[i][k];
            }
        }
    }
    return ::testing::AssertionSuccess();
}

} // namespace korvane::testing
