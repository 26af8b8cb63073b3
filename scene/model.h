// The document: the records of a shape and the globals that hold the scene. Every shape is kept in
// four versions that share an index; only `shapes` is edited, saved and exported, the other three
// are derived from it. Ownership is by containment: a record owns the arrays it points to, a
// back-pointer owns nothing. Coordinates and normals are float triples in model coordinates unless
// said otherwise.
#pragma once

#include <memory>

namespace korvane
{

constexpr int noone = -1; // in the place of an index: none

struct Shape;
struct TreeIter; // defined in scene/treeview.h, because it holds a row of the toolkit's tree store

// A Stripe is a chain of points along a shape's outline or crease; a closed one repeats its first
// point.
struct Stripe {
    int pointnumber; // length of points
    int* points;     // owned; indices into the shape's points, in chain order
    Shape* shape;    // back-pointer; the shape that holds this stripe
};

struct Triangle {
    int points[3];  // indices into the shape's points, in winding order
    int normals[3]; // for each corner an index into the shape's normals
    Shape* shape;   // back-pointer; the shape that holds this triangle
};

// An Edge is an edge of the triangle mesh. Where one triangle alone has it, both entries of
// `triangles` are equal, and so are those of `sides`.
struct Edge {
    int points[2];    // the ends, as the first triangle that met the edge walks it
    int triangles[2]; // indices into the shape's triangles
    int sides[2];     // indices into the shape's sides
};

// The bits of Side::visibility.
enum Visibility { VISIBLE_NOT = 0, VISIBLE_FRONT = 1, VISIBLE_BACK = 2, VISIBLE_BOTH = 3 };

// Places in Side::colors. A set is a light colour (red, green, blue, alpha), a shadow colour (the
// same) and an acuity; the front set is followed by the back set.
enum ColorPlace {
    FRONT_LIGHT = 0,
    FRONT_SHADOW = 4,
    FRONT_ACUITY = 8,
    BACK_LIGHT = 9,
    BACK_SHADOW = 13,
    BACK_ACUITY = 17
};
constexpr int colornumber = 18; // floats in Side::colors

// A Side is one polygonal face. Its triangles are one run of the shape's triangles.
struct Side {
    int pointnumber;           // length of points
    int trianglenumber;        // length of triangles; always pointnumber - 2 in a model shape
    int visibility;            // bits of Visibility
    float colors[colornumber]; // components 0..1, placed as ColorPlace says
    int* points;    // owned; corners, indices into the shape's points, in order round the side
    int* triangles; // owned; indices into the shape's triangles, consecutive
    Shape* shape;   // back-pointer; the shape that holds this side
};

// A Shape is one polyhedral object: points, the sides spanned between them, and what is derived
// from both. A count is the exact length of its arrays. The sides' runs of triangles are
// consecutive and together cover `triangles`. After an edit the derived fields are stale until
// SetNormalsOfShape and ChangeShape have run.
struct Shape {
    int pointnumber;    // length of points
    int normalnumber;   // length of normals
    int vertexnumber;   // length of vertexes
    int stripenumber;   // length of stripes
    int trianglenumber; // length of triangles and of trianglenormals
    int edgenumber;     // length of edges
    int sidenumber;     // length of sides
    int* vertexes;      // owned; indices of the points marked as vertexes; null when there are none
    float (*points)[3]; // owned
    float (*normals)[3];         // owned, derived; shading normals, to which triangle corners refer
    float (*trianglenormals)[3]; // owned, derived; one face normal per triangle
    Stripe* stripes;             // owned, derived from the sides
    Triangle* triangles;         // owned
    Edge* edges;                 // owned, derived; the edges of the triangle mesh
    Side* sides;                 // owned
    float center[3];             // mean of the points
    float radius;                // greatest distance from center to a point; 0 without points
};

// What the projection decided for a shape.
enum ShowState { SHOW_NOTHING = 0, SHOW_PLAIN = 1, SHOW_ROUNDED = 2 };

// The bits of a shape's `selected` byte: a toggle-fade byte in the low five bits, and a mark.
constexpr unsigned char selectedlevel = 15;  // the fade level
constexpr unsigned char selectedshown = 16;  // the shape is shown while the view is restricted
constexpr unsigned char selectedfade = 31;   // level and target: zero when nothing of it is drawn
constexpr unsigned char selectedintree = 64; // the shape is selected in the tree

// The scene. The arrays share their index and are grown and closed up together (AddShape,
// DeleteShapeByIndex).
extern int shapenumber; // number of shapes in the scene
extern Shape** shapes;  // owned; the model as built: the only version edited, saved and exported
extern Shape** round1;  // owned; round1[i] is shapes[i] rounded; made again by ChangeShape(i)
extern Shape** shapest; // owned; shapes[i] in view coordinates; written by the projection
extern Shape** round1t; // owned; round1[i] in view coordinates; written by the projection
extern int* showtable;  // owned; a ShowState per shape; written by the projection
extern unsigned char* selected; // owned; selection and highlight fade per shape, bits as above

// The folder tree. Node 0 is the root folder, which has no row and is never deleted.
extern TreeIter* treeiters;    // owned; all nodes, root first
extern int treeiternumber;     // number of nodes
extern int* treeselected;      // owned; nodes whose rows are selected; null when there are none
extern int treeselectednumber; // length of treeselected
extern char insertiter; // 1 while the program itself inserts a row, which its handler then ignores

// The clipboard.
extern TreeIter* copyiters; // owned; copies of the copied nodes, a node before its subtree
extern int copyiternumber;  // length of copyiters
extern Shape** copyshapes;  // owned; the copied shapes, in view coordinates
extern int copyshapenumber; // length of copyshapes

// Whether the scene has a shape of that index; whether that has a side of that index.
bool IsShapeThere(int shape);
bool IsSideThere(int shape, int side);

// Appends a finished shape to the scene, which takes ownership, computes its centre and radius and
// derives the other versions. The caller adds the tree node (AddTreeIter) and projects the scene:
// until then showtable holds SHOW_NOTHING for it.
void AddShape(Shape* shape);

// Derives centre, radius and the three other versions again after shapes[index] was edited in
// place. The caller projects the shape before it is drawn. The index is not checked.
void ChangeShape(int index);

// A deep copy, whose back-pointers name the copy. The caller owns it (DeleteShape).
Shape* CopyShape(const Shape* shape);

// Frees a shape and everything it owns.
void DeleteShape(Shape* shape);

// Holds a shape that does not belong to the scene (yet).
struct ShapeDeleter {
    void operator()(Shape* shape) const
    {
        DeleteShape(shape);
    }
};
using OwnedShape = std::unique_ptr<Shape, ShapeDeleter>;

// Removes shape `index` from the scene, closes the gap in all six arrays and rebuilds the active
// elements. The tree is the caller's: it removes the node and lowers the later shape indices. The
// index is not checked.
void DeleteShapeByIndex(int index);

// The same for every shape whose entry in `gone`, which has one for each, is not 0: in one pass,
// and the active elements are rebuilt once.
void DeleteMarkedShapes(const char* gone);

// Removes every shape, from the last to the first, and rebuilds the active elements once.
void DeleteAllShapes();

} // namespace korvane
