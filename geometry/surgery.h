// The cuts and joins of which every edit of a shape is made. Each leaves the counts, the sides'
// runs of triangles and the back-pointers in step. The corners inside a changed run, the normals,
// the edges, the centre and the radius are stale until the caller has made them again.
#pragma once

#include <vector>

namespace korvane
{

struct Shape;
struct Side;
struct Stripe;

// Appends points, model coordinates. Returns the index of the first.
int AppendPoints(Shape* shape, const float points[][3], int number);

bool HasCorner(const Side& side, int point);
std::vector<int> GetCornersOfSide(const Side& side);
std::vector<int> GetPointsOfStripe(const Stripe& stripe);
void SetPointsOfStripe(Stripe* stripe, const std::vector<int>& points);
void AppendStripe(Shape* shape, const std::vector<int>& points);

// A list of points the other way round.
std::vector<int> GetReversed(const std::vector<int>& points);

// The side's triangles stay as they are.
void SetCornersOfSide(Side* side, const std::vector<int>& corners);
void ReverseCornersOfSide(Side* side);

// Appends a side whose run stands at the end of the triangles, two fewer than it has corners, with
// the visibility and the colours of `like`, a side of any shape.
void AppendSide(Shape* shape, const std::vector<int>& corners, const Side& like);

void RemoveSide(Shape* shape, int side);       // and its run; later sides and triangles move down
void RemoveStripeAt(Shape* shape, int stripe); // later stripes move down

// Makes a side's run `number` triangles long: it grows and shrinks at its end, later runs follow.
void ResizeRunOfSide(Shape* shape, int side, int number);

// Cuts a side's run, as long as its outline asks, and writes its triangles where it stands.
void CutSideAgain(Shape* shape, int side);
void CutSidesAgain(Shape* shape); // all of them

// Removes the points that are marked, one mark per point: from every outline, every stripe and the
// vertexes, and lowers the indices of the points that stay. No side may lose a corner by it that
// its triangles still have, unless it is cut again. Returns the new index of every point, -1 for
// those that are gone.
std::vector<int> RemovePoints(Shape* shape, const std::vector<bool>& marked);

// Removes the points that are no corner of any side. Returns as RemovePoints.
std::vector<int> RemoveUnusedPoints(Shape* shape);

// Puts a point in another place and cuts the sides that have it as a corner again.
void MovePoint(Shape* shape, int point, const float place[3]);

// Takes out of an outline what encloses nothing: a corner that is like the one before it, and a
// corner whose two neighbours are one point, with one of these. May leave fewer than three corners.
void RemoveSpikes(std::vector<int>& outline);

// Marks points as vertexes or takes their marks away. The marks ascend, each once.
void MarkPoints(Shape* shape, const std::vector<int>& points, bool marked);

} // namespace korvane
