#pragma once
// Services of the platform that the core calls. The window build implements
// them with the toolkit; tests and the command line use RecordingPlatform,
// which answers from a script and remembers what was asked.
#include "screen/control.h"

#include <string>

namespace qm {

enum class MessageButtons { Ok, YesNo };
enum class MessageIcon { None, Exclamation, Information, Critical };
enum class MessageAnswer { Ok, Yes, No };

class MessageBoxes
{
  public:
    virtual ~MessageBoxes() = default;
    virtual MessageAnswer showMessage(const std::string& text, const std::string& title,
                                      MessageButtons buttons, MessageIcon icon) = 0;
};

/// The mouse pointer: busy during a recalculation or a load.
class BusyPointer
{
  public:
    virtual ~BusyPointer() = default;
    virtual void setBusy(bool busy) = 0;
};

/// A surface the chart draws on: the chart picture, or the copy on the
/// window's background. Coordinates are twips from the surface's corner.
class DrawingSurface
{
  public:
    virtual ~DrawingSurface() = default;
    virtual void clear() = 0;
    virtual void line(float x1, float y1, float x2, float y2, Color color) = 0;
};

/// Everything the design screen asks of its platform. The pointers are
/// borrowed and must outlive the form.
struct PlatformServices
{
    MessageBoxes* messages = nullptr;
    BusyPointer* busy = nullptr;
    DrawingSurface* graph = nullptr;      ///< the chart picture Graph
    DrawingSurface* background = nullptr; ///< the window's own background
    /// The locale's decimal separator; '\0' takes it from the C++ locale.
    char decimalSeparator = '\0';
};

} // namespace qm
