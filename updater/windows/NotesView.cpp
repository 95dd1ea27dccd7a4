#include "updater/windows/NotesView.h"

#include "ui/Drawing.h"
#include "ui/Fonts.h"
#include "ui/Palette.h"
#include "ui/ScrollThumb.h"
#include "updater/feed/SafeAddress.h"

#include <QDesktopServices>
#include <QEvent>
#include <QPainter>
#include <QTextBlock>

#include <vector>

namespace tidewell {

namespace {

constexpr int fixedHeight = 180;
constexpr int blockSpacing = 5;
constexpr int ringWidth = 2;
constexpr double cornerRadius = 5;

/// Overrides of the text's direction, which could make a link look as if it led elsewhere.
bool isOverride(QChar character) {
    return (character >= u'\u202A' && character <= u'\u202E') ||
           (character >= u'\u2066' && character <= u'\u2069');
}

} // namespace

NotesView::NotesView(const QString& markdown, const QString& accessibleName) {
    setFont(textFont(TextStyle::callout, font()));
    setFixedHeight(fixedHeight);
    setFrameShape(NoFrame);
    setViewportMargins(ringWidth, ringWidth, ringWidth, ringWidth);
    setVerticalScrollBar(new ScrollThumb); // the view's own from now on
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setOpenLinks(false);
    setContextMenuPolicy(Qt::NoContextMenu); // its texts are Qt's, in Qt's own language
    setAccessibleName(accessibleName);
    connect(this, &QTextBrowser::anchorClicked, this, [](const QUrl& address) {
        if (isSafeLink(address)) {
            QDesktopServices::openUrl(address);
        }
    });
    document()->setDocumentMargin(6);
    document()->setIndentWidth(16);
    document()->setMarkdown(markdown, QTextDocument::MarkdownNoHTML);
    tidy();
    moveCursor(QTextCursor::Start); // or the notes are shown from their end
}

bool NotesView::event(QEvent* event) {
    if (event->type() == QEvent::Paint && showsFocus(*this)) {
        QPainter painter(this);
        drawFocusRing(painter, rect(), cornerRadius, appearanceOf(palette()));
    } else if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        update();
    }
    return QTextBrowser::event(event);
}

/// Puts some air between paragraphs, makes headings no larger than the window's, takes out the
/// frames that stand for pictures and what disguises, and says behind each link where it leads, in
/// ASCII since letters of other scripts may look the same. Links get the colour
/// of the text, which follows the window's palette, in the place of one that was fixed when they
/// were read.
void NotesView::tidy() {
    QTextCursor all(document());
    all.beginEditBlock();
    for (int i = document()->characterCount() - 1; i >= 0; --i) {
        if (isOverride(document()->characterAt(i))) { // written as such, or as &#x202e;
            all.setPosition(i);
            all.deleteChar();
        }
    }
    all.endEditBlock();
    std::vector<QTextCursor> changes;
    QTextBlockFormat spaced;
    spaced.setBottomMargin(blockSpacing);
    spaced.setNonBreakableLines(false); // as those of code are
    QTextCharFormat asLarge;
    asLarge.setProperty(QTextFormat::FontSizeAdjustment, 0);
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        QTextCursor(block).mergeBlockFormat(spaced);
        if (block.blockFormat().headingLevel() > 0) {
            QTextCursor heading(block);
            heading.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
            heading.mergeCharFormat(asLarge);
        }
        for (auto at = block.begin(); !at.atEnd(); ++at) {
            const QTextFragment fragment = at.fragment();
            const QTextCharFormat format = fragment.charFormat();
            if (!format.isImageFormat() && !format.isAnchor()) {
                continue;
            }
            QTextCursor cursor(document());
            cursor.setPosition(fragment.position());
            cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            changes.push_back(cursor);
        }
    }
    for (QTextCursor& cursor : changes) {
        QTextCharFormat format = cursor.charFormat();
        if (format.isImageFormat()) {
            cursor.removeSelectedText();
            if (cursor.block().length() == 1) { // it stood alone
                cursor.atStart() ? cursor.deleteChar() : cursor.deletePreviousChar();
            }
        } else {
            const QUrl target(format.anchorHref());
            format.clearForeground();
            format.setFontUnderline(true);
            cursor.setCharFormat(format);
            cursor.setPosition(cursor.selectionEnd());
            cursor.insertText(QStringLiteral(" (%1)").arg(target.host(QUrl::EncodeUnicode)),
                              QTextCharFormat());
        }
    }
}

} // namespace tidewell
