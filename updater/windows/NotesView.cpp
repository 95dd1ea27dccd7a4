#include "updater/windows/NotesView.h"

#include "ui/Fonts.h"
#include "updater/feed/SafeAddress.h"

#include <QDesktopServices>
#include <QTextBlock>

#include <vector>

namespace tidewell {

namespace {

constexpr int fixedHeight = 180;
constexpr int blockSpacing = 5;

} // namespace

NotesView::NotesView(const QString& markdown, const QString& accessibleName) {
    setFont(textFont(TextStyle::callout, font()));
    setFixedHeight(fixedHeight);
    setOpenLinks(false);
    setContextMenuPolicy(Qt::NoContextMenu); // it speaks the toolkit's language
    setAccessibleName(accessibleName);
    connect(this, &QTextBrowser::anchorClicked, this, [](const QUrl& address) {
        if (isSafeAddress(address)) {
            QDesktopServices::openUrl(address);
        }
    });
    document()->setDocumentMargin(10);
    document()->setIndentWidth(16);
    document()->setMarkdown(markdown, QTextDocument::MarkdownNoHTML);
    tidy();
    moveCursor(QTextCursor::Start); // or the notes are shown from their end
}

/// Puts some air between paragraphs, makes headings no larger than the window's, and takes out the
/// frames that stand for pictures. Links get the colour of the text, which follows the window's
/// palette, in the place of one that was fixed when they were read.
void NotesView::tidy() {
    std::vector<QTextCursor> changes;
    QTextBlockFormat spaced;
    spaced.setBottomMargin(blockSpacing);
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
            format.clearForeground();
            format.setFontUnderline(true);
            cursor.setCharFormat(format);
        }
    }
}

} // namespace tidewell
