#include "view/picking.h"

#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "scene/model.h"
#include "view/mainview.h"
#include "view/screenboxes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace korvane
{

float cubepoints[24][3] = {};
float mouse[3] = {10, 10, 0}; // outside the view until the pointer has come in
float gmouse[3] = {10, 10, 0};
char keyspace = 0;

// A point or stripe nearer to the viewer than this lies behind the eye of the full perspective.
static constexpr float eyedepth = 1.5F;

// The place in its array of the record that was hovered last, whether it still is or not.
static int hoveredpoint = 0;
static int hoveredstripe = 0;
static int hoveredside = 0;

// What can be left out of each shape, for its present records.
static std::vector<ScreenBoxes> boxes;

// The elements of one shape that have to be tested; kept from one search to the next for its
// memory.
static std::vector<int> found;

void ForgetScreenBoxes(int shapeindex)
{
    if (shapeindex < int(boxes.size())) {
        boxes[std::size_t(shapeindex)].hasboxes = false;
    }
}

void ForgetScreenGroups()
{
    boxes.resize(std::size_t(shapenumber));
    for (ScreenBoxes& each : boxes) {
        each.hasgroups = false;
    }
}

static void TakeCandidate(ActiveElement*& candidate, ActiveElement* record, const float* place)
{
    std::copy_n(place, 3, record->position);
    candidate = record;
}

static bool IsNothingYet(const ActiveElement* candidate)
{
    return candidate == nullptr || candidate->type == ELEMENT_CUBEFACE;
}

// The last face under the mouse is taken; its depth is 0.
static void SearchCubeFaces(ActiveElement*& candidate)
{
    if (mainview.bgshape != BACKGROUND_CUBE || (IsUnderConstruction() && keyspace == 0)) {
        return;
    }
    for (int face = 0; face < 6; face++) {
        const float(*corners)[3] = &cubepoints[std::ptrdiff_t(4) * face];
        float place[3] = {mouse[0], mouse[1], 0};
        if (activebgcube[face].active != 0 &&
            (InTheCorners2dSetZ(place, corners[0], corners[1], corners[2]) ||
             InTheCorners2dSetZ(place, corners[0], corners[2], corners[3]))) {
            place[2] = 0;
            TakeCandidate(candidate, &activebgcube[face], place);
        }
    }
}

// This and the next two point the record at its element again: the shape may have been copied anew
// since the records were made.
static void TryPoint(ActiveElement*& candidate, ActiveElement* record, float* point)
{
    record->element = point;
    if (record->active == 0 || !PointNear2d(mouse, point) || !(point[2] < eyedepth)) {
        return;
    }
    if (IsNothingYet(candidate) || point[2] > candidate->position[2]) {
        TakeCandidate(candidate, record, point);
    }
}

static bool StripeWins(const ActiveElement* candidate, const ActiveElement* record, float depth)
{
    if (IsNothingYet(candidate)) {
        return true;
    }
    if (!(depth > candidate->position[2] && depth < eyedepth)) {
        return false;
    }
    return candidate->type == ELEMENT_STRIPE ||
           (candidate->type == ELEMENT_POINT && !IsPointOfStripe(candidate, record));
}

static void TryStripe(ActiveElement*& candidate, ActiveElement* record, Stripe* stripe)
{
    record->element = stripe;
    float place[3] = {mouse[0], mouse[1], mouse[2]};
    if (record->active != 0 && StripeNear2d(place, stripe) &&
        StripeWins(candidate, record, place[2])) {
        TakeCandidate(candidate, record, place);
    }
}

static bool SideWins(const ActiveElement* candidate, const ActiveElement* record, float depth)
{
    if (IsNothingYet(candidate)) {
        return true;
    }
    if (!(depth > candidate->position[2])) {
        return false;
    }
    return candidate->type == ELEMENT_SIDE ||
           (candidate->type == ELEMENT_POINT && !IsPointOfSide(candidate, record)) ||
           (candidate->type == ELEMENT_STRIPE && !IsStripeOfSide(candidate, record));
}

// The first triangle under the mouse decides for its side.
static void TrySide(ActiveElement*& candidate, ActiveElement* record, Side* side)
{
    record->element = side;
    float place[3] = {mouse[0], mouse[1], mouse[2]};
    for (int k = 0; k < side->trianglenumber; k++) {
        if (InTheTriangle2dSetZ(place, &side->shape->triangles[side->triangles[k]])) {
            if (SideWins(candidate, record, place[2])) {
                TakeCandidate(candidate, record, place);
            }
            return;
        }
    }
}

// How far from its centre a projected shape shows. The perspective widens what is nearer than the
// centre and moves it outwards, so that its radius does not reach all that is seen.
static double GetReach(const Shape* shape)
{
    const double radius = double(shape->radius);
    const int8_t level = mainview.perspective;
    if ((level & fadefull) == 0) {
        return radius;
    }
    const double depth = double(shape->center[2]);
    const double unwidened = radius / GetPerspectiveFactor(level, depth);
    // Of points too near to the eye or too far away the factor is 1.
    const double greatest = std::max(1.0, GetPerspectiveFactor(level, depth + unwidened));
    const double smallest = std::min(1.0, GetPerspectiveFactor(level, depth - unwidened));
    const double aside = std::hypot(double(shape->center[0]), double(shape->center[1]));
    return unwidened * greatest + aside * (greatest / smallest - 1);
}

static bool IsNearShape(const Shape* shape)
{
    const double dx = double(mouse[0]) - double(shape->center[0]);
    const double dy = double(mouse[1]) - double(shape->center[1]);
    return std::hypot(dx, dy) <= GetReach(shape) + pickdistance;
}

// While space is held during a construction, sides that can be picked otherwise can be picked too.
static bool ReachesSides(int i)
{
    return IsUnderConstruction() && keyspace != 0 && IsPickable(i);
}

// The points first, then the stripes, then the sides.
static void SearchShape(ActiveElement*& candidate, int i, const RecordRun& run)
{
    Shape* shape = shapest[i];
    UpdateScreenBoxes(boxes[std::size_t(i)], shape);
    FindElementsAt(boxes[std::size_t(i)], shape, mouse, found);
    const bool haslines = mainview.linesfade != 0 && (selected[i] & selectedintree) != 0;
    const bool reached = ReachesSides(i);
    for (const int k : found) {
        const int stripe = k - shape->pointnumber;
        const int side = stripe - shape->stripenumber;
        if (stripe < 0) {
            if (haslines) {
                TryPoint(candidate, &activepoints[run.firstpoint + k], shape->points[k]);
            }
        } else if (side < 0) {
            if (haslines) {
                TryStripe(candidate, &activestripes[run.firststripe + stripe],
                          &shape->stripes[stripe]);
            }
        } else if (mainview.sidesfade != 0 &&
                   (reached || activesides[run.firstside + side].active != 0)) {
            TrySide(candidate, &activesides[run.firstside + side], &shape->sides[side]);
        }
    }
}

// Deliberate: the points of a construction win over everything, the last one over the others.
static void SearchConstruction(ActiveElement*& candidate)
{
    const int first = activepointnumber - CountConstructionRecords();
    for (int k = first; k < activepointnumber; k++) {
        ActiveElement* record = &activepoints[k];
        if (record->active != 0 && PointNear2d(mouse, GetPointOfElement(record))) {
            TakeCandidate(candidate, record, GetPointOfElement(record));
        }
    }
}

// Takes the hover flag from the record of an array that had it last, and gives it to the candidate
// if it is of that array's type.
static void MoveHoverIn(ActiveElement* records, int number, ElementType type, int& hovered,
                        ActiveElement* candidate)
{
    if (hovered < number) {
        records[hovered].hover = 0;
    }
    if (candidate != nullptr && candidate->type == type) {
        hovered = int(candidate - records);
        candidate->hover = 1;
    }
}

static void MoveHover(ActiveElement* candidate)
{
    for (ActiveElement& face : activebgcube) {
        face.hover = &face == candidate ? 1 : 0;
    }
    MoveHoverIn(activepoints, activepointnumber, ELEMENT_POINT, hoveredpoint, candidate);
    MoveHoverIn(activestripes, activestripenumber, ELEMENT_STRIPE, hoveredstripe, candidate);
    MoveHoverIn(activesides, activesidenumber, ELEMENT_SIDE, hoveredside, candidate);
}

void SearchActive()
{
    ActiveElement* candidate = nullptr;
    SearchCubeFaces(candidate);
    for (int i = 0; i < shapenumber; i++) {
        const RecordRun* run = showtable[i] == SHOW_NOTHING ? nullptr : GetRecordRun(i);
        if (run != nullptr && IsNearShape(shapest[i])) {
            SearchShape(candidate, i, *run);
        }
    }
    SearchConstruction(candidate);
    MoveHover(candidate);
    activepointer = candidate;
    if (candidate != nullptr) {
        mouse[2] = candidate->position[2];
    }
}

} // namespace korvane
