#include "scene/scenereader.h"

#include "geometry/shapegeometry.h"
#include "geometry/triangulation.h"
#include "scene/arrays.h"
#include "scene/foldertable.h"
#include "scene/numbers.h"
#include "scene/scenefile.h"
#include "scene/tokenizer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace korvane
{

// Where the reader stands. A list is collected before its array is made: a count in the file is
// only a claim, and what is really there decides how much memory is taken.
struct SceneReader {
    MemorySource source{};
    char token[tokensize]{};  // the current token; at the end of the file the last one stays
    int length = 0;           // of the token
    bool ended = false;       // a token was wanted and the file had none
    bool mismatched = false;  // a keyword was another than expected
    std::vector<int> indices; // the list that was read last, as is the next
    std::vector<std::array<float, 3>> points;
};

static std::string_view GetToken(const SceneReader& reader)
{
    return {reader.token, std::size_t(reader.length)};
}

static void ReadNext(SceneReader& reader)
{
    const int length = ReadTokenFrom(reader.source, reader.token, tokensize);
    if (length == 0) {
        reader.ended = true;
        return;
    }
    reader.length = length;
}

// Deliberate: a keyword that does not match is noted and reading goes on as if it had matched.
// Nobody asks for the note: such a file gives whatever its counts and tokens give.
static void CheckKeyword(SceneReader& reader, std::string_view keyword)
{
    if (GetToken(reader) != keyword) {
        reader.mismatched = true;
    }
}

static void ReadKeyword(SceneReader& reader, std::string_view keyword)
{
    ReadNext(reader);
    CheckKeyword(reader, keyword);
}

static int ReadInteger(SceneReader& reader)
{
    ReadNext(reader);
    return ParseInteger(GetToken(reader));
}

static float ReadReal(SceneReader& reader)
{
    ReadNext(reader);
    return ParseReal(GetToken(reader));
}

// Reads a count and the keyword of the list that follows; a negative count reads as none.
static int ReadCount(SceneReader& reader, std::string_view listkeyword)
{
    const int count = std::max(0, ReadInteger(reader));
    ReadKeyword(reader, listkeyword);
    return count;
}

// This list and the others end with the file when their count says more.
static void ReadIndices(SceneReader& reader, int count)
{
    reader.indices.clear();
    for (int i = 0; i < count; i++) {
        const int index = ReadInteger(reader);
        if (reader.ended) {
            return;
        }
        reader.indices.push_back(index);
    }
}

static void SkipTokens(SceneReader& reader, std::int64_t count)
{
    for (std::int64_t i = 0; i < count && !reader.ended; i++) {
        ReadNext(reader);
    }
}

static void ReadPoints(SceneReader& reader, Shape* shape)
{
    ReadKeyword(reader, "PointNumber");
    const int count = ReadCount(reader, "Points");
    reader.points.clear();
    for (int i = 0; i < count; i++) {
        const float x = ReadReal(reader);
        if (reader.ended) {
            break;
        }
        const float y = ReadReal(reader);
        const float z = ReadReal(reader);
        reader.points.push_back({x, y, z});
    }
    shape->pointnumber = int(reader.points.size());
    shape->points = NewUnfilledArray<float[3]>(shape->pointnumber);
    for (int i = 0; i < shape->pointnumber; i++) {
        std::copy_n(reader.points[std::size_t(i)].data(), 3, shape->points[i]);
    }
}

// The marks are a set: sorted, each once, none outside the points.
static void SetVertexesOfDraft(Shape* shape, std::vector<int>& marks)
{
    std::erase_if(marks, [shape](int mark) { return mark < 0 || mark >= shape->pointnumber; });
    std::sort(marks.begin(), marks.end());
    marks.erase(std::unique(marks.begin(), marks.end()), marks.end());
    shape->vertexnumber = int(marks.size());
    shape->vertexes = marks.empty() ? nullptr : CopyArray(marks.data(), shape->vertexnumber);
}

// Reads the marks if there are any, and the keyword of the triangles that follow.
static void ReadVertexes(SceneReader& reader, Shape* shape)
{
    ReadNext(reader);
    if (GetToken(reader) == "VertexNumber") {
        ReadIndices(reader, ReadCount(reader, "Vertexes"));
        SetVertexesOfDraft(shape, reader.indices);
        ReadNext(reader);
    }
    CheckKeyword(reader, "TriangleNumber");
}

// The triangles are cut anew from the sides, so those of the file only have to be passed.
static void ReadTriangles(SceneReader& reader)
{
    const int count = ReadCount(reader, "Triangles");
    SkipTokens(reader, std::int64_t(3) * count);
}

static int GetVisibility(std::string_view word)
{
    if (word == "frontback") {
        return VISIBLE_BOTH;
    }
    if (word == "front") {
        return VISIBLE_FRONT;
    }
    return word == "back" ? VISIBLE_BACK : VISIBLE_NOT;
}

// Reads a side after its first keyword.
static void ReadSide(SceneReader& reader, Side& side)
{
    ReadIndices(reader, ReadCount(reader, "Points"));
    side.pointnumber = int(reader.indices.size());
    side.points = CopyArray(reader.indices.data(), side.pointnumber);
    ReadKeyword(reader, "TriangleNumber");
    ReadCount(reader, "Triangles"); // Deliberate: the outline alone decides how many there are
    side.trianglenumber = std::max(0, side.pointnumber - 2);
    side.triangles = NewArray<int>(side.trianglenumber);
    SkipTokens(reader, side.trianglenumber);
    ReadKeyword(reader, "Visibility");
    ReadNext(reader);
    side.visibility = GetVisibility(GetToken(reader));
    ReadKeyword(reader, "Colors");
    for (float& color : side.colors) {
        color = ReadReal(reader);
    }
}

static void ReadSides(SceneReader& reader, Shape* shape)
{
    ReadKeyword(reader, "SideNumber");
    const int count = ReadCount(reader, "Sides");
    for (int i = 0; i < count; i++) {
        ReadKeyword(reader, "PointNumber");
        if (reader.ended) {
            return;
        }
        GrowArray(shape->sides, i, i + 1);
        shape->sidenumber = i + 1;
        ReadSide(reader, shape->sides[i]);
        shape->sides[i].shape = shape;
    }
}

static bool HasStrayPoint(const Side& side, int pointnumber)
{
    return std::any_of(side.points, side.points + side.pointnumber,
                       [=](int point) { return point < 0 || point >= pointnumber; });
}

// Why a shape cannot be kept; null when it can.
static const char* FindFault(const Shape& shape)
{
    if (shape.sidenumber == 0) {
        return "it has no side";
    }
    for (int i = 0; i < shape.sidenumber; i++) {
        if (shape.sides[i].pointnumber < 3) {
            return "a side has fewer than three points";
        }
        if (HasStrayPoint(shape.sides[i], shape.pointnumber)) {
            return "a side names a point that is not there";
        }
    }
    return nullptr;
}

static void MakeRoomForTriangles(Shape* shape)
{
    for (int i = 0; i < shape->sidenumber; i++) {
        shape->trianglenumber += shape->sides[i].trianglenumber;
    }
    shape->triangles = NewArray<Triangle>(shape->trianglenumber);
    for (int i = 0; i < shape->trianglenumber; i++) {
        shape->triangles[i].shape = shape;
    }
}

// Finds the name and the folder of a shape in its path. What names no folder stands at the top.
static ShapeDraft PlaceShape(const FolderTable& table, std::string_view path)
{
    const std::size_t cut = path.rfind('/');
    if (cut == path.npos) {
        return {std::string(path), norootfolder, nullptr};
    }
    const int folder = cut == 0 ? norootfolder : table.Find(path.substr(0, cut), norootfolder);
    return {std::string(path.substr(cut + 1)), folder, nullptr};
}

// Reads a shape whose first keyword is current, and the keyword of the next.
static void ReadShape(SceneReader& reader, const FolderTable& table, SceneDraft& draft)
{
    CheckKeyword(reader, "Name");
    ReadNext(reader);
    if (reader.ended) { // not even its name is there
        return;
    }
    const std::string path(GetToken(reader));
    OwnedShape shape(NewArray<Shape>(1));
    ReadPoints(reader, shape.get());
    ReadVertexes(reader, shape.get());
    ReadTriangles(reader);
    ReadSides(reader, shape.get());
    if (const char* fault = FindFault(*shape)) {
        draft.dropped.push_back({path, fault});
    } else {
        MakeRoomForTriangles(shape.get());
        draft.shapes.push_back(PlaceShape(table, path));
        draft.shapes.back().shape = std::move(shape);
        draft.whole += reader.ended ? 0 : 1;
    }
    ReadNext(reader);
}

// The folders that are read, by depth and by path.
struct FolderReader {
    FolderTable table;
    std::vector<int> places;           // of each folder's path in the table
    std::array<int, tokensize> newest; // of each depth, the folder read last
};

// Puts a folder below the newest one that is a level higher; without such a one, at the top.
static void AddFolder(FolderReader& folders, std::string_view line, SceneDraft& draft)
{
    const std::size_t depth = std::min(line.find_first_not_of('/'), line.size());
    const int parent = folders.newest[depth - 1]; // no folder has depth 0
    const int parentplace =
        parent == norootfolder ? FolderTable::rootplace : folders.places[std::size_t(parent)];
    const int folder = int(draft.folders.size());
    draft.folders.push_back({std::string(line.substr(depth)), parent});
    folders.places.push_back(folders.table.Add(parentplace, line.substr(depth - 1), folder));
    folders.newest[depth] = folder;
}

// Reads the folder lines, and the token that follows them.
static FolderTable ReadFolders(SceneReader& reader, SceneDraft& draft)
{
    FolderReader folders;
    folders.newest.fill(norootfolder);
    ReadNext(reader);
    while (!reader.ended && GetToken(reader).starts_with('/')) {
        AddFolder(folders, GetToken(reader), draft);
        ReadNext(reader);
    }
    return std::move(folders.table);
}

// Deliberate: the four tokens are read to fixed places of one buffer, each over the end of the one
// before. So a longer first token passes when its first seven letters are right.
static bool ReadHeader(SceneReader& reader)
{
    char header[tokensize] = "";
    for (const int place : {0, 7, 9, 10}) {
        ReadTokenFrom(reader.source, header + place, tokensize - place);
    }
    return std::string_view(header) == "Korvanev10ShapeNumber";
}

SceneDraft ReadScene(std::string_view bytes)
{
    SceneDraft draft;
    SceneReader reader;
    reader.source = {bytes.data(), bytes.data() + bytes.size()};
    draft.isscene = ReadHeader(reader);
    if (!draft.isscene) {
        return draft;
    }
    draft.announced = std::max(0, ReadInteger(reader));
    ReadNext(reader);
    draft.hasfolders = GetToken(reader) == "Folders";
    if (!draft.hasfolders) {
        return draft;
    }
    const FolderTable table = ReadFolders(reader, draft);
    for (int i = 0; i < draft.announced && !reader.ended; i++) {
        ReadShape(reader, table, draft);
    }
    draft.mismatched = reader.mismatched;
    return draft;
}

void DeriveLoadedShape(Shape* shape)
{
    int first = 0;
    for (int i = 0; i < shape->sidenumber; i++) {
        SetTrianglesOfSide(&shape->sides[i], first);
        first += shape->sides[i].trianglenumber;
    }
    SetStripesOfShape(shape);
    SetNormalsOfShape(shape);
}

} // namespace korvane
