#include "media/media_filter_form.h"

#include "core/forms/frmMediaList.h"
#include "media/frmMediaList_events.h"
#include "windowing/show_pass.h"
#include "windowing/text.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QListView>
#include <QTreeView>
#include <algorithm>

namespace {

forms::FrmMediaList& form() { return forms::frmMediaList; }

/// Whether a name holds all the words of a filter, wherever in it, in small letters or large.
bool holds(const QString& name, const QStringList& words)
{
    return std::ranges::all_of(words, [&](const QString& word) { return name.contains(word, Qt::CaseInsensitive); });
}

/// Of the rows that the text hides, from 1.
std::vector<std::int32_t> hiddenPlaces()
{
    const QStringList words = fromProgram(form().txtFilter.Text.get()).split(' ', Qt::SkipEmptyParts);
    const ListView& list = form().lvwMediaList;
    std::vector<std::int32_t> hidden;
    for (std::int32_t place = 1; place <= list.Count(); ++place) {
        if (!holds(fromProgram(list.Row(place).Text), words)) {
            hidden.push_back(place);
        }
    }
    return hidden;
}

} // namespace

MediaFilter::MediaFilter(QWidget* parent) : QLineEdit(parent)
{
    setObjectName("txtFilter");
    setPlaceholderText(tr("Filter by name"));
    setAccessibleName(tr("Filter of the media files"));
    setWhatsThis(tr("Shows only the files whose names hold what you type here. The others stay open."));
    setClearButtonEnabled(true);
    if (auto* const clear = findChild<QAbstractButton*>()) {
        clear->setAccessibleName(tr("Empty the filter"));
        clear->setToolTip(clear->accessibleName());
    }
    setMouseTracking(true);
    connect(this, &QLineEdit::textEdited, this, typed); // the button that empties it tells so too
}

void MediaFilter::typed(const QString& text)
{
    form().txtFilter.Text = toProgram(text);
    frmMediaList::txtFilter_Change(hiddenPlaces());
    showPass().runNow(); // the next key may be one for the rows
}

void MediaFilter::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        clear();
        typed({});
        break;
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        left();
        break;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void MediaFilter::mouseMoveEvent(QMouseEvent* event)
{
    frmMediaList::Form_MouseMove();
    QLineEdit::mouseMoveEvent(event);
}

int MediaFilter::showState(QTreeView& details, QListView& icons)
{
    const ListView& list = form().lvwMediaList;
    std::vector<std::int32_t> hidden = hiddenPlaces();
    if (std::ranges::any_of(hidden, [&](std::int32_t place) { return list.Row(place).Selected; })) {
        form().txtFilter.Text = std::string();
        hidden.clear();
    }
    if (const QString shown = fromProgram(form().txtFilter.Text.get()); text() != shown) {
        setText(shown);
    }
    for (std::int32_t place = 1; place <= list.Count(); ++place) {
        const bool isHidden = std::ranges::binary_search(hidden, place);
        if (details.isRowHidden(place - 1, {}) != isHidden) {
            details.setRowHidden(place - 1, {}, isHidden);
        }
        if (icons.isRowHidden(place - 1) != isHidden) {
            icons.setRowHidden(place - 1, isHidden);
        }
    }
    return list.Count() - static_cast<int>(hidden.size());
}
