#include "view/picking.h"

#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "view/mainview.h"
#include "view/screenboxes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <vector>

namespace korvane
{

ActiveElement* activepoints = nullptr;
int activepointnumber = 0;
ActiveElement* activestripes = nullptr;
int activestripenumber = 0;
ActiveElement* activesides = nullptr;
int activesidenumber = 0;
ActiveElement activebgcube[6] = {};
ActiveElement* activepointer = nullptr;
float cubepoints[24][3] = {};
float mouse[3] = {10, 10, 0}; // outside the view until the pointer has come in
float gmouse[3] = {10, 10, 0};
int buttonpresspointactive = -1;
int buttonpressstripeactive = -1;
int buttonpresssideactive = -1;
char keyspace = 0;

// A point or stripe nearer to the viewer than this lies behind the eye of the full perspective.
static constexpr float eyedepth = 1.5F;

// Where the records of a shape begin, and for how many elements they were made.
struct RecordRun {
    int firstpoint, firststripe, firstside;
    int pointnumber, stripenumber, sidenumber;
    ScreenBoxes boxes;
};

// From one SetActives to the next.
static std::vector<RecordRun> runs; // one per shape
static int shapepoints = 0;         // records of activepoints that belong to shapes

// The place in its array of the record that was hovered last, whether it still is or not.
static int hoveredpoint = 0;
static int hoveredstripe = 0;
static int hoveredside = 0;

// The elements of one shape that have to be tested; kept from one search to the next for its
// memory.
static std::vector<int> found;

static unsigned char IsPickable(int shapeindex)
{
    return showtable[shapeindex] == SHOW_ROUNDED && mainview.action == 0 ? 1 : 0;
}

// True when shape i still has the elements for which its records were made. Between an edit and its
// SetActives it need not.
static bool HasRecords(int i)
{
    if (i >= int(runs.size())) {
        return false;
    }
    const RecordRun& run = runs[std::size_t(i)];
    return run.pointnumber == shapest[i]->pointnumber &&
           run.stripenumber == shapest[i]->stripenumber && run.sidenumber == shapest[i]->sidenumber;
}

// How many records of a construction stand at the end of activepoints.
static int GetConstructionRecords()
{
    return std::clamp(activepointnumber - shapepoints, 0, centernumber + newpointnumber);
}

// Lays out the runs of the current shapes; returns the totals as the run that would follow.
static RecordRun SetRuns()
{
    RecordRun next = {};
    runs.resize(std::size_t(shapenumber));
    for (int i = 0; i < shapenumber; i++) {
        const Shape* shape = shapest[i];
        RecordRun& run = runs[std::size_t(i)];
        run.firstpoint = next.firstpoint;
        run.firststripe = next.firststripe;
        run.firstside = next.firstside;
        run.pointnumber = shape->pointnumber;
        run.stripenumber = shape->stripenumber;
        run.sidenumber = shape->sidenumber;
        run.boxes.hasgroups = false;
        next.firstpoint += shape->pointnumber;
        next.firststripe += shape->stripenumber;
        next.firstside += shape->sidenumber;
    }
    return next;
}

static void SetRecord(ActiveElement& record, ElementType type, void* element, unsigned char active)
{
    record.active = active;
    record.type = type;
    record.element = element;
}

static void SetRecordsOfShape(int i)
{
    const RecordRun& run = runs[std::size_t(i)];
    const unsigned char active = IsPickable(i);
    for (int k = 0; k < run.pointnumber; k++) {
        SetRecord(activepoints[run.firstpoint + k], ELEMENT_POINT, shapest[i]->points[k], active);
    }
    for (int k = 0; k < run.stripenumber; k++) {
        SetRecord(activestripes[run.firststripe + k], ELEMENT_STRIPE, &shapest[i]->stripes[k],
                  active);
    }
    for (int k = 0; k < run.sidenumber; k++) {
        SetRecord(activesides[run.firstside + k], ELEMENT_SIDE, &shapest[i]->sides[k], active);
    }
}

static bool AreListsAsLong(const RecordRun& total)
{
    return total.firstpoint == shapepoints && total.firststripe == activestripenumber &&
           total.firstside == activesidenumber;
}

template <class Visit> static void VisitRecordsOfShapes(Visit visit)
{
    std::for_each_n(activepoints, shapepoints, visit);
    std::for_each_n(activestripes, activestripenumber, visit);
    std::for_each_n(activesides, activesidenumber, visit);
}

static std::vector<unsigned char> GetActiveFlags()
{
    std::vector<unsigned char> flags;
    VisitRecordsOfShapes([&flags](const ActiveElement& record) { flags.push_back(record.active); });
    return flags;
}

static void RestoreActiveFlags(const std::vector<unsigned char>& flags)
{
    auto flag = flags.begin();
    VisitRecordsOfShapes([&flag](ActiveElement& record) { record.active = *flag++; });
}

void ForgetPressedElements()
{
    buttonpresspointactive = -1;
    buttonpressstripeactive = -1;
    buttonpresssideactive = -1;
}

void SetActives()
{
    const int construction = GetConstructionRecords();
    const RecordRun total = SetRuns();
    const bool aslong = AreListsAsLong(total);
    if (!aslong) {
        ForgetPressedElements(); // an index means nothing in lists of another length
    }
    const bool keep = aslong && IsUnderConstruction();
    const std::vector<unsigned char> flags = keep ? GetActiveFlags() : std::vector<unsigned char>();
    ActiveElement* points = NewArray<ActiveElement>(total.firstpoint + construction);
    for (int k = 0; k < construction; k++) {
        points[total.firstpoint + k] = activepoints[activepointnumber - construction + k];
        points[total.firstpoint + k].hover = 0; // until SearchActive finds it again
    }
    FreeArray(activepoints);
    FreeArray(activestripes);
    FreeArray(activesides);
    activepoints = points;
    activestripes = NewArray<ActiveElement>(total.firststripe);
    activesides = NewArray<ActiveElement>(total.firstside);
    activepointnumber = total.firstpoint + construction;
    activestripenumber = total.firststripe;
    activesidenumber = total.firstside;
    shapepoints = total.firstpoint;
    activepointer = nullptr;
    for (int i = 0; i < shapenumber; i++) {
        SetRecordsOfShape(i);
    }
    if (keep) {
        RestoreActiveFlags(flags);
    }
}

static void SetActiveFlags(ActiveElement* records, int number, unsigned char active)
{
    for (int k = 0; k < number; k++) {
        records[k].active = active;
    }
}

void ChangeActives()
{
    if (IsUnderConstruction() || mainview.action != 0) {
        return;
    }
    for (int i = 0; i < std::min(shapenumber, int(runs.size())); i++) {
        const RecordRun& run = runs[std::size_t(i)];
        const unsigned char active = IsPickable(i);
        SetActiveFlags(activepoints + run.firstpoint, run.pointnumber, active);
        SetActiveFlags(activestripes + run.firststripe, run.stripenumber, active);
        SetActiveFlags(activesides + run.firstside, run.sidenumber, active);
    }
    SearchActive();
}

void SetActivesOff()
{
    SetActiveFlags(activepoints, activepointnumber, 0);
    SetActiveFlags(activestripes, activestripenumber, 0);
    SetActiveFlags(activesides, activesidenumber, 0);
}

void ForgetScreenBoxes(int shapeindex)
{
    if (shapeindex < int(runs.size())) {
        runs[std::size_t(shapeindex)].boxes.hasboxes = false;
    }
}

static bool HasPoint(const int* points, int number, int point)
{
    return std::find(points, points + number, point) != points + number;
}

// The index of a point's coordinates in a shape; -1 when they are not its own.
static int GetPointIndex(const ActiveElement* point, const Shape* shape)
{
    const float* place = GetPointOfElement(point);
    const float* first = shape->points[0];
    const float* end = first + 3 * std::ptrdiff_t(shape->pointnumber);
    const std::less<const float*> before; // a total order even of pointers into different arrays
    if (before(place, first) || !before(place, end)) {
        return -1;
    }
    return int((place - first) / 3);
}

bool IsPointOfStripe(const ActiveElement* point, const ActiveElement* stripe)
{
    const Stripe* s = GetStripeOfElement(stripe);
    return HasPoint(s->points, s->pointnumber, GetPointIndex(point, s->shape));
}

bool IsPointOfSide(const ActiveElement* point, const ActiveElement* side)
{
    const Side* s = GetSideOfElement(side);
    return HasPoint(s->points, s->pointnumber, GetPointIndex(point, s->shape));
}

bool IsStripeOfSide(const ActiveElement* stripe, const ActiveElement* side)
{
    const Stripe* st = GetStripeOfElement(stripe);
    const Side* sd = GetSideOfElement(side);
    return st->shape == sd->shape &&
           std::all_of(st->points, st->points + st->pointnumber,
                       [&](int point) { return HasPoint(sd->points, sd->pointnumber, point); });
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
    return IsUnderConstruction() && keyspace != 0 && IsPickable(i) != 0;
}

// The points first, then the stripes, then the sides.
static void SearchShape(ActiveElement*& candidate, int i)
{
    Shape* shape = shapest[i];
    RecordRun& run = runs[std::size_t(i)];
    UpdateScreenBoxes(run.boxes, shape);
    FindElementsAt(run.boxes, shape, mouse, found);
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
    const int first = activepointnumber - GetConstructionRecords();
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
        if (showtable[i] != SHOW_NOTHING && HasRecords(i) && IsNearShape(shapest[i])) {
            SearchShape(candidate, i);
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
