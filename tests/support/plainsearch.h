// The rule of picking told plainly: every element of every shape is tested, in order, and nothing
// is left out beforehand but what the rule leaves out. Picking has to agree with it everywhere; it
// is slow on purpose. It guards what picking leaves out for speed. It does not guard the rule,
// which it only repeats: what a user can pick has tests of its own.
#pragma once

#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "scene/model.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace korvane::testing
{

using Place = std::array<float, 3>;

struct PlainSearch {
    ActiveElement* found = nullptr;
    Place place = {}; // where it was hit

    bool HasNothing() const
    {
        return found == nullptr || found->type == ELEMENT_CUBEFACE;
    }
    bool HasType(ElementType type) const
    {
        return found != nullptr && found->type == type;
    }
    void Take(ActiveElement* record, const Place& at)
    {
        found = record;
        place = at;
    }
};

inline void SearchFacesPlainly(PlainSearch& search)
{
    const bool constructing = newsign != 0 || duplicatesign != 0;
    if (mainview.bgshape != BACKGROUND_CUBE || (constructing && keyspace == 0)) {
        return;
    }
    for (std::size_t face = 0; face < 6; face++) {
        const float(*c)[3] = cubepoints + 4 * face;
        Place at = {mouse[0], mouse[1], 0};
        const bool first = InTheCorners2dSetZ(at.data(), c[0], c[1], c[2]);
        const bool second = InTheCorners2dSetZ(at.data(), c[0], c[2], c[3]);
        if (activebgcube[face].active != 0 && (first || second)) {
            search.Take(&activebgcube[face], {mouse[0], mouse[1], 0});
        }
    }
}

inline void SearchPointsPlainly(PlainSearch& search, int first, const Shape* shape)
{
    for (int k = 0; k < shape->pointnumber; k++) {
        ActiveElement* record = &activepoints[first + k];
        const float* p = shape->points[k];
        if (record->active != 0 && PointNear2d(mouse, p) && p[2] < 1.5F &&
            (search.HasNothing() || p[2] > search.place[2])) {
            search.Take(record, {p[0], p[1], p[2]});
        }
    }
}

inline void SearchStripesPlainly(PlainSearch& search, int first, const Shape* shape)
{
    for (int k = 0; k < shape->stripenumber; k++) {
        ActiveElement* record = &activestripes[first + k];
        Place at = {mouse[0], mouse[1], 0};
        if (record->active == 0 || !StripeNear2d(at.data(), &shape->stripes[k])) {
            continue;
        }
        const bool nearer = !search.HasNothing() && at[2] > search.place[2] && at[2] < 1.5F;
        if (search.HasNothing() || (nearer && search.HasType(ELEMENT_STRIPE)) ||
            (nearer && search.HasType(ELEMENT_POINT) && !IsPointOfStripe(search.found, record))) {
            search.Take(record, at);
        }
    }
}

inline void SearchSidesPlainly(PlainSearch& search, int first, const Shape* shape, bool reached)
{
    for (int k = 0; k < shape->sidenumber; k++) {
        ActiveElement* record = &activesides[first + k];
        const Side& side = shape->sides[k];
        Place at = {mouse[0], mouse[1], 0};
        bool hit = false;
        for (int t = 0; t < side.trianglenumber && !hit; t++) {
            hit = InTheTriangle2dSetZ(at.data(), &shape->triangles[side.triangles[t]]);
        }
        if (!hit || (record->active == 0 && !reached)) {
            continue;
        }
        const bool nearer = !search.HasNothing() && at[2] > search.place[2];
        if (search.HasNothing() || (nearer && search.HasType(ELEMENT_SIDE)) ||
            (nearer && search.HasType(ELEMENT_POINT) && !IsPointOfSide(search.found, record)) ||
            (nearer && search.HasType(ELEMENT_STRIPE) && !IsStripeOfSide(search.found, record))) {
            search.Take(record, at);
        }
    }
}

// Without perspective a shape is reached in its circle; in perspective it shows beyond that.
inline bool IsReachedPlainly(const Shape* shape)
{
    const double distance = std::hypot(double(mouse[0]) - double(shape->center[0]),
                                       double(mouse[1]) - double(shape->center[1]));
    return (mainview.perspective & fadefull) != 0 ||
           distance <= double(shape->radius) + pickdistance;
}

// What SearchActive has to find, which this leaves as it is. The records must fit the scene.
inline PlainSearch SearchPlainly()
{
    PlainSearch search;
    SearchFacesPlainly(search);
    const bool reaching = (newsign != 0 || duplicatesign != 0) && keyspace != 0;
    int firstpoint = 0, firststripe = 0, firstside = 0;
    for (int i = 0; i < shapenumber; i++) {
        const Shape* shape = shapest[i];
        if (showtable[i] != SHOW_NOTHING && IsReachedPlainly(shape)) {
            if (mainview.linesfade != 0 && (selected[i] & selectedintree) != 0) {
                SearchPointsPlainly(search, firstpoint, shape);
                SearchStripesPlainly(search, firststripe, shape);
            }
            if (mainview.sidesfade != 0) {
                const bool reached =
                    reaching && showtable[i] == SHOW_ROUNDED && mainview.action == 0;
                SearchSidesPlainly(search, firstside, shape, reached);
            }
        }
        firstpoint += shape->pointnumber;
        firststripe += shape->stripenumber;
        firstside += shape->sidenumber;
    }
    for (int k = firstpoint; k < activepointnumber; k++) {
        const float* p = GetPointOfElement(&activepoints[k]);
        if (activepoints[k].active != 0 && PointNear2d(mouse, p)) {
            search.Take(&activepoints[k], {p[0], p[1], p[2]});
        }
    }
    return search;
}

} // namespace korvane::testing
