#include "tests/support/invariants.h"

#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "scene/model.h"
#include "scene/treeview.h"
#include "view/picking.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <vector>

namespace korvane::testing
{

static bool IsInRange(int index, int number)
{
    return index >= 0 && index < number;
}

static bool AreInRange(const int* indices, int count, int number)
{
    return std::all_of(indices, indices + count, [=](int i) { return IsInRange(i, number); });
}

static std::string FindBrokenRuleOfVertexes(const Shape& shape)
{
    if ((shape.vertexes == nullptr) != (shape.vertexnumber == 0)) {
        return "vertexes is null exactly when there are none";
    }
    if (!AreInRange(shape.vertexes, shape.vertexnumber, shape.pointnumber)) {
        return "a vertex names a point of its shape";
    }
    return "";
}

// A model shape's marks are a set. A rounded shape may repeat its last vertex.
static std::string FindBrokenRuleOfMarks(const Shape& shape)
{
    const auto descending = [](int a, int b) { return a >= b; };
    int* end = shape.vertexes + shape.vertexnumber;
    if (std::adjacent_find(shape.vertexes, end, descending) != end) {
        return "vertexes ascend without repeats";
    }
    return "";
}

static std::string FindBrokenRuleOfStripes(const Shape& shape)
{
    for (int i = 0; i < shape.stripenumber; i++) {
        const Stripe& stripe = shape.stripes[i];
        if (stripe.shape != &shape) {
            return "a stripe's back-pointer names its shape";
        }
        if (stripe.pointnumber < 2) {
            return "a stripe has at least two points";
        }
        if (!AreInRange(stripe.points, stripe.pointnumber, shape.pointnumber)) {
            return "a stripe's points are points of its shape";
        }
    }
    return "";
}

static std::string FindBrokenRuleOfTriangles(const Shape& shape)
{
    for (int i = 0; i < shape.trianglenumber; i++) {
        const Triangle& triangle = shape.triangles[i];
        if (triangle.shape != &shape) {
            return "a triangle's back-pointer names its shape";
        }
        if (!AreInRange(triangle.points, 3, shape.pointnumber)) {
            return "a triangle's corners are points of its shape";
        }
        if (!AreInRange(triangle.normals, 3, shape.normalnumber)) {
            return "a triangle's normals are normals of its shape";
        }
    }
    return "";
}

static std::string FindBrokenRuleOfEdges(const Shape& shape)
{
    for (int i = 0; i < shape.edgenumber; i++) {
        const Edge& edge = shape.edges[i];
        if (!AreInRange(edge.points, 2, shape.pointnumber) ||
            !AreInRange(edge.triangles, 2, shape.trianglenumber) ||
            !AreInRange(edge.sides, 2, shape.sidenumber)) {
            return "an edge's indices lie in their arrays";
        }
        if (edge.triangles[0] == edge.triangles[1] && edge.sides[0] != edge.sides[1]) {
            return "an edge of one triangle names one side";
        }
    }
    return "";
}

// The outline rules hold for model shapes only: a rounded shape keeps no outlines.
static std::string FindBrokenRuleOfOutline(const Side& side, const Shape& shape)
{
    if (side.pointnumber < 3) {
        return "a side has at least three corners";
    }
    if (side.trianglenumber != side.pointnumber - 2) {
        return "a side has two triangles fewer than corners";
    }
    if (!AreInRange(side.points, side.pointnumber, shape.pointnumber)) {
        return "a side's corners are points of its shape";
    }
    return "";
}

// Every side's triangles are one run; the runs cover the array without overlap.
static std::string FindBrokenRuleOfRuns(const Shape& shape)
{
    std::vector<int> uses(std::size_t(shape.trianglenumber), 0);
    for (int i = 0; i < shape.sidenumber; i++) {
        const Side& side = shape.sides[i];
        if (side.shape != &shape) {
            return "a side's back-pointer names its shape";
        }
        for (int k = 0; k < side.trianglenumber; k++) {
            if (!IsInRange(side.triangles[k], shape.trianglenumber)) {
                return "a side's triangles are triangles of its shape";
            }
            if (side.triangles[k] != side.triangles[0] + k) {
                return "a side's triangles are consecutive";
            }
            uses[std::size_t(side.triangles[k])]++;
        }
    }
    if (std::any_of(uses.begin(), uses.end(), [](int n) { return n != 1; })) {
        return "every triangle belongs to exactly one side";
    }
    return "";
}

static std::string FindBrokenRuleOfNumbers(const Shape& shape)
{
    for (int i = 0; i < shape.pointnumber; i++) {
        for (float coordinate : shape.points[i]) {
            if (!std::isfinite(coordinate)) {
                return "every coordinate is finite";
            }
        }
    }
    return "";
}

// What holds for every version of a shape, the rounded one included.
static std::string FindBrokenRuleOfMesh(const Shape& shape)
{
    for (auto rule : {FindBrokenRuleOfVertexes, FindBrokenRuleOfStripes, FindBrokenRuleOfTriangles,
                      FindBrokenRuleOfEdges, FindBrokenRuleOfRuns, FindBrokenRuleOfNumbers}) {
        const std::string broken = rule(shape);
        if (!broken.empty()) {
            return broken;
        }
    }
    return "";
}

std::string FindBrokenRuleOfShape(const Shape& shape)
{
    if (shape.sidenumber < 1) {
        return "a shape has at least one side";
    }
    for (int i = 0; i < shape.sidenumber; i++) {
        const std::string broken = FindBrokenRuleOfOutline(shape.sides[i], shape);
        if (!broken.empty()) {
            return broken;
        }
    }
    const std::string broken = FindBrokenRuleOfMarks(shape);
    return broken.empty() ? FindBrokenRuleOfMesh(shape) : broken;
}

std::string FindBrokenRuleOfClosedBody(const Shape& shape)
{
    std::map<std::pair<int, int>, int> uses;
    std::set<int> used;
    for (int i = 0; i < shape.sidenumber; i++) {
        const Side& side = shape.sides[i];
        used.insert(side.points, side.points + side.pointnumber);
        for (int k = 0; k < side.pointnumber; k++) {
            uses[{side.points[k], side.points[(k + 1) % side.pointnumber]}]++;
        }
    }
    for (const auto& [edge, number] : uses) {
        const auto opposite = uses.find({edge.second, edge.first});
        if (opposite == uses.end() || opposite->second != number) {
            return "every directed edge is met by its opposite";
        }
    }
    return int(used.size()) == shape.pointnumber ? "" : "every point is a corner of a side";
}

static bool HaveEqualTopology(const Shape& a, const Shape& b)
{
    if (a.pointnumber != b.pointnumber || a.normalnumber != b.normalnumber ||
        a.vertexnumber != b.vertexnumber || a.stripenumber != b.stripenumber ||
        a.trianglenumber != b.trianglenumber || a.edgenumber != b.edgenumber ||
        a.sidenumber != b.sidenumber) {
        return false;
    }
    for (int i = 0; i < a.trianglenumber; i++) {
        if (!std::equal(a.triangles[i].points, a.triangles[i].points + 3, b.triangles[i].points) ||
            !std::equal(a.triangles[i].normals, a.triangles[i].normals + 3,
                        b.triangles[i].normals)) {
            return false;
        }
    }
    return true;
}

static std::string FindBrokenRuleOfVersions(int i)
{
    for (const Shape* copy : {shapest[i], round1[i], round1t[i]}) {
        const std::string broken = FindBrokenRuleOfMesh(*copy);
        if (!broken.empty()) {
            return "in a derived version: " + broken;
        }
    }
    if (!HaveEqualTopology(*shapes[i], *shapest[i]) ||
        !HaveEqualTopology(*round1[i], *round1t[i])) {
        return "a view copy has the topology of its original";
    }
    if (round1[i]->trianglenumber != 9 * shapes[i]->trianglenumber) {
        return "rounding makes nine triangles of each";
    }
    return "";
}

static std::string FindBrokenRuleOfNodes()
{
    std::set<int> seen;
    for (int n = 1; n < treeiternumber; n++) {
        const TreeIter& node = treeiters[n];
        if (!IsInRange(node.parent, treeiternumber) || treeiters[node.parent].type != NODE_FOLDER) {
            return "a node's parent is a folder";
        }
        const TreeIter& folder = treeiters[node.parent];
        if (std::count(folder.children, folder.children + folder.childnumber, n) != 1) {
            return "a folder lists each of its nodes once";
        }
        if (node.type == NODE_FOLDER) {
            continue;
        }
        if (!IsInRange(node.shapeindex, shapenumber) || !seen.insert(node.shapeindex).second) {
            return "every shape node has a shape of its own";
        }
        if ((node.type == NODE_SIDE) != (shapes[node.shapeindex]->sidenumber == 1)) {
            return "a node's type follows its shape's number of sides";
        }
    }
    return int(seen.size()) == shapenumber ? "" : "every shape has a node";
}

static std::string FindBrokenRuleOfRows(int folder, GtkTreeIter* row)
{
    GtkTreeModel* model = GTK_TREE_MODEL(store);
    const TreeIter& node = treeiters[folder];
    if (gtk_tree_model_iter_n_children(model, row) != node.childnumber) {
        return "a folder has a row for each child";
    }
    for (int i = 0; i < node.childnumber; i++) {
        GtkTreeIter child;
        gtk_tree_model_iter_nth_child(model, &child, row, i);
        int index = 0;
        char* name = nullptr;
        gtk_tree_model_get(model, &child, COLUMN_NODE, &index, COLUMN_NAME, &name, -1);
        const bool same = index == node.children[i] && std::string(name) == treeiters[index].name;
        g_free(name);
        if (!same) {
            return "the rows stand in the order of the nodes and carry their names";
        }
        const std::string broken = FindBrokenRuleOfRows(index, &child);
        if (!broken.empty()) {
            return broken;
        }
    }
    return "";
}

static std::string FindBrokenRuleOfActives()
{
    int points = 0;
    int stripes = 0;
    int sides = 0;
    for (int i = 0; i < shapenumber; i++) {
        for (int k = 0; k < shapes[i]->pointnumber; k++) {
            if (points + k >= activepointnumber ||
                activepoints[points + k].element != shapest[i]->points[k]) {
                return "the active points are the projected points in scene order";
            }
        }
        points += shapes[i]->pointnumber;
        stripes += shapes[i]->stripenumber;
        sides += shapes[i]->sidenumber;
    }
    if (activestripenumber != stripes || activesidenumber != sides) {
        return "there is an active record for every stripe and side";
    }
    if (activepointnumber != points + centernumber + newpointnumber) {
        return "there is an active record for every point";
    }
    return "";
}

static std::string FindBrokenRuleOfConstruction()
{
    for (int i = 0; i < newpointnumber; i++) {
        if (GetNewPointRecords()[i].element != rotated[i]) {
            return "the last active points are the new points";
        }
    }
    for (int i = 0; i < centernumber; i++) {
        if (GetCenterRecords()[i].element != rcenterpoints[i]) {
            return "the active points before the new points are the centres";
        }
    }
    if (newpointnumber > 0 && !IsUnderConstruction()) {
        return "points are under construction only while a tool is on";
    }
    return "";
}

std::string FindBrokenRule()
{
    for (int i = 0; i < shapenumber; i++) {
        std::string broken = FindBrokenRuleOfShape(*shapes[i]);
        if (broken.empty()) {
            broken = FindBrokenRuleOfVersions(i);
        }
        if (!broken.empty()) {
            return "shape " + std::to_string(i) + ": " + broken;
        }
    }
    std::string broken = FindBrokenRuleOfNodes();
    if (broken.empty()) {
        broken = FindBrokenRuleOfRows(0, nullptr);
    }
    if (broken.empty()) {
        broken = FindBrokenRuleOfActives();
    }
    return broken.empty() ? FindBrokenRuleOfConstruction() : broken;
}

} // namespace korvane::testing
