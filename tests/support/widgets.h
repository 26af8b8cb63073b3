// Hands and eyes for the window tests: the main window, the widgets in it, and the answer to a
// dialog that runs a main loop of its own.
#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <string>
#include <vector>

namespace korvane::testing
{

// The main window, built and shown once for all the tests of a program.
GtkWidget* ShowMainWindow();

// Handles the events that are pending, those on the way from the X server included.
void HandleEvents();

// Handles events until the condition holds; false when it does not in good time.
bool HandleEventsUntil(const std::function<bool()>& condition);

std::vector<GtkWidget*> GetChildren(GtkWidget* container);

// The widgets of a type at or below `root`, depth first, internal ones included, but none inside
// another of them; and the first, null without one.
std::vector<GtkWidget*> FindWidgets(GtkWidget* root, GType type);
GtkWidget* FindWidget(GtkWidget* root, GType type);

std::string GetText(const char* text); // empty for null

// As when the user moves a slider to a value.
void MoveSlider(GtkWidget* slider, double value);

// True when the handler is connected to that signal with that data.
bool IsConnected(void* object, const char* signal, GCallback handler, void* data = nullptr);

// True when the two pictures have the same pixels.
bool AreAlike(const GdkPixbuf* a, const GdkPixbuf* b);

// True when the picture is that of the file icons/`name` of the source folder.
bool IsIcon(const GdkPixbuf* picture, const std::string& name);

// Shows the next dialog that appears to `answer`, again and again until it has responded and
// returns true. A dialog that cannot be answered in good time is a failure and is cancelled.
void AnswerDialog(std::function<bool(GtkDialog*)> answer);

// Answers the next dialog that appears with this response.
void AnswerDialog(int response);

} // namespace korvane::testing
