#include "files/printing.h"

#include "design/cycle.h"
#include "screen/quellmark_form.h"

#include <exception>

namespace qm {

namespace {

Printer& printerOf(QuellmarkForm& f)
{
    if (!f.platform.printer) throw PrintFailure("this build has no printer");
    return *f.platform.printer;
}

void dressForPaper(QuellmarkForm& f)
{
    f.savedBackColor = f.Form.backColor;
    f.Form.backColor = kWhite;
    for (Control* frame : {&f.Frame1, &f.Frame2, &f.Frame3, &f.Frame4, &f.Frame5, &f.Frame6})
        frame->backColor = kWhite;
    f.Form.height = kTallFormHeight;
}

void printCopies(QuellmarkForm& f, int copies)
{
    Printer& printer = printerOf(f);
    for (int copy = 1; copy <= copies; ++copy) {
        printer.setOrientation(kLandscape);
        printer.printForm();
    }
    printer.endDocument();
}

/// Cancel or a printer failure: the document ends, the form gets its own
/// colour and height back, and the other frames stay white until the next
/// recalculation.
void abandonPrint(QuellmarkForm& f, int savedTop)
{
    try {
        if (f.platform.printer) f.platform.printer->endDocument();
    } catch (const std::exception&) {
        // The printer that failed may fail again on ending; the form is put
        // back all the same.
    }
    f.Form.backColor = f.savedBackColor;
    f.Frame5.backColor = f.savedBackColor;
    f.Frame6.backColor = f.savedBackColor;
    f.Form.height = kNormalFormHeight;
    f.Form.top = savedTop;
    f.Graph.visible = true;
}

} // namespace

void Print_Click(QuellmarkForm& f)
{
    const int savedTop = f.Form.top;
    try {
        dressForPaper(f);
        f.Form.top = 0;
        const int copies = printerOf(f).showPrintDialog();
        if (f.suppressUpdate == 0) updatescreen(f);
        // The copy of the chart on the background is what comes on paper.
        f.Graph.visible = false;
        printCopies(f, copies);
        f.Form.backColor = f.savedBackColor;
        f.Form.height = kNormalFormHeight;
        if (f.suppressUpdate == 0) updatescreen(f);
        f.Form.top = savedTop;
        f.Graph.visible = true;
    } catch (const std::exception&) {
        abandonPrint(f, savedTop);
    }
}

void registerPrintHandlers(QuellmarkForm& f)
{
    f.on("Print", FormEvent::Click,
         [](QuellmarkForm& form, int, const EventArgs&) { Print_Click(form); });
}

} // namespace qm
