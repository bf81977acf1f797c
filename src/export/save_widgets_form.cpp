#include "export/save_widgets_form.h"

#include "windowing/text.h"

#include <QGridLayout>
#include <QStackedWidget>

QGridLayout* SaveDialogue::values(forms::CompressionValues& values, Ticks ticks)
{
    struct Row {
        const char* box;
        const char* slider;
        const char* label;
        QString text;
        forms::CompressionValue& value;
        int tickInterval;
    };
    const Row rows[] = {
        {"chkFrameRate", "sldFPS", "lblFPS", tr("&Frame Rate (FPS)"), values.FrameRate, 1},
        {"chkKeyFrameRate", "sldKeyFrameRate", "lblKeyFrameRate", tr("&Key Frame Rate"), values.KeyFrameRate, 1},
        {"chkQuality", "sldQuality", "lblQuality", tr("&Quality"), values.Quality, 5},
        {"chkPFrameFrequency", "sldPFrameFrequency", "lblPFrameFrequency", tr("&Predicted Frame Frequency"),
         values.PFrameFrequency, 1}};
    auto* const grid = new QGridLayout;
    for (int place = 0; const Row& row : rows) {
        // Ahead of its slider, as Tab goes.
        QCheckBox* const box = ticks == kTicked ? checkBox(row.box, row.text, row.value.chk) : nullptr;
        QSlider* const slide = slider(row.slider, QString(row.text).remove('&'), row.value.sld);
        slide->setTickInterval(row.tickInterval);
        slide->setMinimumWidth(fontMetrics().averageCharWidth() * 30);
        if (box != nullptr) {
            grid->addWidget(box, place, 0);
        } else {
            auto* const label = new QLabel(row.text, this);
            label->setBuddy(slide);
            also([label, &value = row.value] { label->setEnabled(value.lblEnabled); });
            grid->addWidget(label, place, 0);
        }
        grid->addWidget(slide, place, 1);
        QLabel* const said = this->said(row.label, row.value.lbl);
        said->setMinimumWidth(fontMetrics().horizontalAdvance("1000"));
        also([said, &value = row.value] { said->setEnabled(value.lblEnabled); });
        grid->addWidget(said, place, 2);
        ++place;
    }
    return grid;
}

QWidget* SaveDialogue::profile(const char* listName, const char* boxName, forms::ProfileChoice& choice)
{
    auto* const stack = new QStackedWidget(this);
    QComboBox* const all = list(listName, tr("Profile"), choice.cboProfile);
    QLineEdit* const chosen = textBox(boxName, tr("Profile"), choice.txtProfile);
    chosen->setReadOnly(true);
    chosen->setMinimumWidth(fontMetrics().averageCharWidth() * 56);
    stack->addWidget(all);
    stack->addWidget(chosen);
    stack->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    also([stack, &choice] {
        stack->setCurrentIndex(choice.txtProfileVisible ? 1 : 0);
        stack->setFocusProxy(stack->currentWidget()); // where its label's key leads
    });
    return stack;
}
