#include "shell/design_drop.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace qm {

DesignDrop::DesignDrop(QWidget* window, std::function<void(const QString&)> open)
    : QObject(window), window_(window), open_(std::move(open))
{
}

QString DesignDrop::designFileOf(const QMimeData* mime)
{
    if (!mime || !mime->hasUrls() || mime->urls().size() != 1) return {};
    const QUrl url = mime->urls().constFirst();
    if (!url.isLocalFile()) return {};
    const QString path = url.toLocalFile();
    return path.endsWith(QStringLiteral(".qmf"), Qt::CaseInsensitive) ? path : QString();
}

bool DesignDrop::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) return false;
    auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || widget->window() != window_) return false;
    auto* drop = static_cast<QDropEvent*>(event);
    const QString path = designFileOf(drop->mimeData());
    if (path.isEmpty()) return false;
    drop->acceptProposedAction();
    if (type == QEvent::Drop) open_(path);
    return true;
}

} // namespace qm
