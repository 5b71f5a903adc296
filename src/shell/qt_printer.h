#pragma once
// The printer of the design screen: Qt's print dialog and printer, or, for a
// batch run, a PDF file written with no dialog. The page itself is drawn by
// a function the window gives, as vectors at the printer's resolution.
#include "screen/platform.h"

#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>

class QPagedPaintDevice;
class QPainter;
class QPdfWriter;
class QPrinter;
class QSaveFile;

namespace qm {

class QtPrinter : public Printer
{
  public:
    /// Draws one page into `page`, a rectangle of the painter's device.
    using PageRenderer = std::function<void(QPainter& painter, const QRectF& page)>;

    QtPrinter(PageRenderer renderer, QWidget* dialogParent);
    ~QtPrinter() override;
    QtPrinter(const QtPrinter&) = delete;
    QtPrinter& operator=(const QtPrinter&) = delete;

    /// From now on the print dialog is not shown: every job is written to
    /// this PDF file, `copies` pages of it.
    void printToPdfFile(const QString& path, int copies = 1);

    int showPrintDialog() override;
    void setOrientation(int orientation) override;
    void printForm() override;
    void endDocument() override;

    /// Pages of the last document, and why it failed (empty when it didn't).
    int pagesPrinted() const { return pages_; }
    const QString& lastFailure() const { return failure_; }

  private:
    [[noreturn]] void fail(const QString& why);

    PageRenderer renderer_;
    QPointer<QWidget> parent_;
    QString pdfPath_;
    int pdfCopies_ = 1;
    std::unique_ptr<QPrinter> printer_;
    std::unique_ptr<QSaveFile> pdfFile_; ///< replaces the file only when the document is whole
    std::unique_ptr<QPdfWriter> pdf_;
    QPagedPaintDevice* device_ = nullptr; ///< the printer or the PDF file
    std::unique_ptr<QPainter> painter_;
    int pages_ = 0;
    QString failure_;
};

} // namespace qm
