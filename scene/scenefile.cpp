#include "scene/scenefile.h"

#include "scene/arrays.h"
#include "scene/filereplacement.h"
#include "scene/model.h"
#include "scene/scenereader.h"
#include "scene/scenewriter.h"
#include "scene/textbuffer.h"
#include "scene/tokenizer.h"
#include "scene/treeview.h"
#include "scene/undo.h"
#include "ui/dialogs.h"
#include "ui/input.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <climits>
#include <string>

namespace korvane
{

// No file that can be read has more shapes: each takes 45 tokens at least (one point, one side of
// three corners with its look), and a token a byte and the one that ends it.
static constexpr int mostshapes = INT_MAX / 90;

int ReadToken(FILE* file, char* buffer)
{
    FileSource source{file};
    return ReadTokenFrom(source, buffer, tokensize) == 0 ? 1 : 0;
}

// The node of a folder of the draft, which come first after the root, in the order of the draft.
static int GetFolderNode(int folder)
{
    return folder + 1; // norootfolder gives the root
}

// Puts a draft into the scene, which is empty, and takes the draft's shapes.
static void InstallScene(SceneDraft& draft)
{
    for (const FolderDraft& folder : draft.folders) {
        AppendTreeIter(GetFolderNode(folder.parent), NODE_FOLDER, -1, CopyText(folder.name));
    }
    for (ShapeDraft& entry : draft.shapes) {
        Shape* shape = entry.shape.release();
        DeriveLoadedShape(shape);
        AddShape(shape);
        AppendTreeIter(GetFolderNode(entry.folder), GetTypeOfShape(shape), shapenumber - 1,
                       CopyText(entry.name));
    }
    SortAndShowTree();
    SetActives();
    RefreshView(); // only what has been projected can be picked
}

// What could not be kept of the shapes that a file has; empty when all was.
static std::string DescribeDropped(const SceneDraft& draft)
{
    const std::size_t number = draft.dropped.size();
    if (number == 0) {
        return "";
    }
    const char* rest = number == 1 ? " damaged shape is left out" : " damaged shapes are left out";
    return std::to_string(number) + rest;
}

// What a file announces and does not have to its end; empty when it has all. A count that is beyond
// every file is not repeated.
static std::string DescribeMissing(const SceneDraft& draft)
{
    const int missing = draft.announced - draft.whole - int(draft.dropped.size());
    if (missing == 0) {
        return "";
    }
    if (draft.announced > mostshapes) {
        return "The file ends too early";
    }
    return std::to_string(missing) + " of " + std::to_string(draft.announced) +
           (draft.announced == 1 ? " shape" : " shapes") + (missing == 1 ? " is" : " are") +
           " missing or incomplete: the file ends too early";
}

// Tells what of a file is not in the scene: each dropped shape and what is missing on standard
// output, the numbers of both below the view.
static void ReportLosses(const SceneDraft& draft)
{
    for (const DroppedShape& shape : draft.dropped) {
        std::printf("Shape %s is left out: %s\n", shape.path.c_str(), shape.reason);
    }
    const std::string dropped = DescribeDropped(draft);
    const std::string missing = DescribeMissing(draft);
    if (!missing.empty()) {
        std::printf("%s\n", missing.c_str());
    }
    const char* between = dropped.empty() || missing.empty() ? "" : ". ";
    const std::string losses = dropped + between + missing;
    if (!losses.empty()) {
        PrintStatusBar(losses.c_str());
    }
}

static int FailToOpen()
{
    ErrorDialog("Can't open the scene!");
    return 1;
}

int OpenMrt(const char* path)
{
    FileBytes file;
    if (!ReadRegularFile(path, file)) {
        return FailToOpen();
    }
    SceneDraft draft = ReadScene(file.GetText());
    if (!draft.isscene) {
        return FailToOpen();
    }
    NewMrt();
    rdstate |= redrawwanted;
    if (!draft.hasfolders) {
        return FailToOpen();
    }
    InstallScene(draft);
    ReportLosses(draft);
    return 0;
}

static void WriteFolders(TextBuffer& text, int node, int depth)
{
    const TreeIter& folder = treeiters[node];
    for (int i = 0; i < folder.childnumber; i++) {
        const TreeIter& child = treeiters[folder.children[i]];
        if (child.type == NODE_FOLDER) {
            WriteFolderLine(text, GetNameForFile(child.name, "folder"), depth);
            WriteFolders(text, folder.children[i], depth + 1);
        }
    }
}

// `path` is that of the node.
static void WriteShapes(TextBuffer& text, int node, const std::string& path)
{
    const TreeIter& folder = treeiters[node];
    for (int i = 0; i < folder.childnumber; i++) {
        const TreeIter& child = treeiters[folder.children[i]];
        if (child.type == NODE_FOLDER) {
            WriteShapes(text, folder.children[i],
                        path + "/" + GetNameForFile(child.name, "folder"));
        } else {
            const std::string shapepath = path + "/" + GetNameForFile(child.name, "shape");
            WriteShapeBlock(text, shapepath, *shapes[child.shapeindex]);
        }
    }
}

// The path of a folder as the file has it; empty for the root.
static std::string GetPathForFile(int node)
{
    std::string path;
    for (; node > 0; node = treeiters[node].parent) {
        path.insert(0, "/" + GetNameForFile(treeiters[node].name, "folder"));
    }
    return path;
}

void FolderSave(FILE* file, int node, int depth)
{
    TextBuffer text(file);
    WriteFolders(text, node, depth);
    FlushText(text);
}

void ShapeSave(FILE* file, int node)
{
    TextBuffer text(file);
    WriteShapes(text, node, GetPathForFile(node));
    FlushText(text);
}

static void WriteScene(FILE* file)
{
    TextBuffer text(file);
    WriteHeader(text, shapenumber);
    FlushText(text);
    FolderSave(file, 0, 1);
    std::fputs("\n", file);
    ShapeSave(file, 0);
}

int SaveMrt(const char* path)
{
    if (!ReplaceFile(path, WriteScene)) {
        ErrorDialog("Can't save the scene!");
        return 1;
    }
    return 0;
}

int NewMrt()
{
    DelPuffer();
    DelScene();
    return 0;
}

void DelScene()
{
    EndPointerActions();
    DeleteAllShapes();
    ClearTree();
    PrintStatusBar(""); // whatever it said was about what is gone
}

void New()
{
    NewMrt();
    rdstate |= redrawwanted;
}

void Open()
{
    const Block<char[]> name = FileDialog(FILE_OPENSCENE);
    if (name != nullptr) {
        OpenMrt(name.get());
    }
}

static void SaveInMode(int mode)
{
    const Block<char[]> name = FileDialog(mode);
    if (name != nullptr) {
        SaveMrt(name.get());
    }
}

void Save()
{
    SaveInMode(FILE_SAVESCENE);
}

void SaveAs()
{
    SaveInMode(FILE_SAVESCENEAS);
}

} // namespace korvane
