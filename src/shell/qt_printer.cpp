#include "shell/qt_printer.h"

#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QSaveFile>

#include <algorithm>

namespace qm {

QtPrinter::QtPrinter(PageRenderer renderer, QWidget* dialogParent)
    : renderer_(std::move(renderer)), parent_(dialogParent)
{
}

QtPrinter::~QtPrinter()
{
    if (painter_ && painter_->isActive()) painter_->end();
}

void QtPrinter::printToPdfFile(const QString& path, int copies)
{
    pdfPath_ = path;
    pdfCopies_ = copies;
}

void QtPrinter::fail(const QString& why)
{
    failure_ = why;
    throw PrintFailure(why.toStdString());
}

namespace {

/// Pages are laid out in the screen's own units, 96 to the inch, so that
/// lines drawn one pixel wide on the screen keep that weight on paper; the
/// page is vectors all the same, sharp at any printer's resolution.
constexpr int kPageDotsPerInch = 96;

} // namespace

int QtPrinter::showPrintDialog()
{
    painter_.reset();
    printer_.reset();
    pdf_.reset();
    pdfFile_.reset();
    device_ = nullptr;
    pages_ = 0;
    failure_.clear();
    if (!pdfPath_.isEmpty()) {
        // A file needs no printer: the writer asks no print system for one.
        pdfFile_ = std::make_unique<QSaveFile>(pdfPath_);
        if (!pdfFile_->open(QIODevice::WriteOnly))
            fail(QStringLiteral("the file can't be written: ") + pdfFile_->errorString());
        pdf_ = std::make_unique<QPdfWriter>(pdfFile_.get());
        pdf_->setResolution(kPageDotsPerInch);
        pdf_->setTitle(QStringLiteral("Quellmark"));
        pdf_->setCreator(QStringLiteral("Quellmark"));
        pdf_->setPageMargins(QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter);
        device_ = pdf_.get();
        return pdfCopies_;
    }
    printer_ = std::make_unique<QPrinter>(QPrinter::ScreenResolution);
    printer_->setDocName(QStringLiteral("Quellmark"));
    printer_->setPageOrientation(QPageLayout::Landscape);
    QPrintDialog dialog(printer_.get(), parent_);
    if (dialog.exec() != QDialog::Accepted) fail(QStringLiteral("the print dialog was cancelled"));
    // Every copy is a page of its own in one document; the printer must not
    // repeat the document on top of that.
    const int copies = std::max(1, printer_->copyCount());
    printer_->setCopyCount(1);
    device_ = printer_.get();
    return copies;
}

void QtPrinter::setOrientation(int orientation)
{
    if (!device_) fail(QStringLiteral("no print job"));
    device_->setPageOrientation(orientation == kLandscape ? QPageLayout::Landscape
                                                          : QPageLayout::Portrait);
}

void QtPrinter::printForm()
{
    if (!device_) fail(QStringLiteral("no print job"));
    if (!painter_) {
        painter_ = std::make_unique<QPainter>();
        if (!painter_->begin(device_))
            fail(QStringLiteral("the printer could not start the document"));
    } else if (!device_->newPage()) {
        fail(QStringLiteral("the printer could not start a new page"));
    }
    // The painter's origin is the corner of the printable area.
    const QRect printable = device_->pageLayout().paintRectPixels(device_->logicalDpiX());
    renderer_(*painter_, QRectF(QPointF(0, 0), QSizeF(printable.size())));
    ++pages_;
}

void QtPrinter::endDocument()
{
    const bool ended = !painter_ || !painter_->isActive() || painter_->end();
    painter_.reset();
    if (pdfFile_) {
        // A file is written whole or not at all: a failed job leaves any
        // earlier file as it was.
        if (ended && failure_.isEmpty() && pages_ > 0) {
            if (!pdfFile_->commit())
                fail(QStringLiteral("the file can't be written: ") + pdfFile_->errorString());
        } else {
            pdfFile_->cancelWriting();
        }
        pdfFile_.reset();
    }
    if (!ended) fail(QStringLiteral("the printer could not finish the document"));
}

} // namespace qm
