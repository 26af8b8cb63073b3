#include "view/activeelements.h"

#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <algorithm>
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
int buttonpresspointactive = -1;
int buttonpressstripeactive = -1;
int buttonpresssideactive = -1;

// From one SetActives to the next.
static std::vector<RecordRun> runs; // one per shape
static int shapepoints = 0;         // records of activepoints that belong to shapes

bool IsPickable(int shapeindex)
{
    return showtable[shapeindex] == SHOW_ROUNDED && mainview.action == 0;
}

const RecordRun* GetRecordRun(int shapeindex)
{
    if (shapeindex >= int(runs.size())) {
        return nullptr;
    }
    const RecordRun& run = runs[std::size_t(shapeindex)];
    const Shape* shape = shapest[shapeindex];
    const bool fits = run.pointnumber == shape->pointnumber &&
                      run.stripenumber == shape->stripenumber &&
                      run.sidenumber == shape->sidenumber;
    return fits ? &run : nullptr;
}

int CountConstructionRecords()
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
    const unsigned char active = IsPickable(i) ? 1 : 0;
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
    const int construction = CountConstructionRecords();
    const RecordRun total = SetRuns();
    ForgetScreenGroups();
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
        const unsigned char active = IsPickable(i) ? 1 : 0;
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

} // namespace korvane
