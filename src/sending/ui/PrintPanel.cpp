#include "PrintPanel.h"

#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/texts/Texts.h"
#include "sending/PrintDocument.h"
#include "widgets/Alert.h"

#include <QCoreApplication>
#include <QPointer>
#include <QPrintDialog>
#include <QThreadPool>

PrintOptions printOptionsOf(const QPrinter &printer)
{
    PrintOptions o;
    o.copies = qMax(1, printer.copyCount());
    o.collate = printer.collateCopies();
    if (printer.printRange() == QPrinter::PageRange && !printer.pageRanges().isEmpty())
        o.pageRanges = printer.pageRanges().toString();
    switch (printer.duplex()) {
    case QPrinter::DuplexLongSide: o.sides = PrintOptions::Sides::TwoSidedLongEdge; break;
    case QPrinter::DuplexShortSide: o.sides = PrintOptions::Sides::TwoSidedShortEdge; break;
    default: break;
    }
    // Portrait is every printer's own default; only a turn asked for is passed on.
    if (printer.pageLayout().orientation() == QPageLayout::Landscape)
        o.orientation = PrintOptions::Orientation::Landscape;
    o.media = printer.pageLayout().pageSize().key();
    return o;
}

PrintPanel::PrintPanel(const QString &path, const QByteArray &password, QWidget *parent)
    : QObject(parent), m_path(path), m_password(password), m_printer(QPrinter::HighResolution)
{
    m_printer.setDocName(NativePath::forDisplay(PathParts::lastComponent(path)));
    m_dialog = new QPrintDialog(&m_printer, parent);
    m_dialog->setObjectName(QStringLiteral("printDialog"));
    m_dialog->setWindowTitle(Texts::localized("printDialogTitle"));
    // Jobs go to a printer of the printing system; a PDF of a PDF is what Save as PDF is for.
    m_dialog->setOption(QAbstractPrintDialog::PrintToFile, false);
    m_dialog->setOption(QAbstractPrintDialog::PrintPageRange, true);
    m_dialog->setOption(QAbstractPrintDialog::PrintCollateCopies, true);
    connect(m_dialog, &QDialog::finished, this, [this](int result) {
        m_dialog->deleteLater();
        if (result != QDialog::Accepted) {
            qInfo("print canceled");
            Q_EMIT finished(false);
            return;
        }
        accepted();
    });
}

void PrintPanel::open() { m_dialog->open(); }

void PrintPanel::accepted()
{
    PrintService *service = Platform::current().print;
    PrintDocument::Job job{m_path, m_password, m_printer.printerName(), printOptionsOf(m_printer), m_printer.pageLayout()};
    if (!service) {
        qWarning("no printing system to hand %s to", qPrintable(NativePath::forDisplay(m_path)));
        Q_EMIT finished(false);
        return;
    }
    QPointer<PrintPanel> self(this);
    QThreadPool::globalInstance()->start([self, service, job] {
        const Result<int> printed = PrintDocument::print(*service, job);
        QMetaObject::invokeMethod(QCoreApplication::instance(), [self, printed, job] {
            if (printed.ok()) {
                qInfo("print success (job %d on %s)", printed.value(), qPrintable(job.printer));
            } else {
                qWarning("%s", qPrintable(printed.error().message));
                showAlert(QMessageBox::Warning, Texts::localized("printFailedTitle"), printed.error().message);
            }
            if (self)
                Q_EMIT self->finished(printed.ok());
        }, Qt::QueuedConnection);
    });
}
