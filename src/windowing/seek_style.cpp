#include "windowing/seek_style.h"

#include <QProxyStyle>

namespace {

class SeekStyle final : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override
    {
        return hint == SH_Slider_AbsoluteSetButtons ? static_cast<int>(Qt::LeftButton)
                                                    : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

} // namespace

void seekWherePressed(QSlider& slider)
{
    auto* const style = new SeekStyle;
    style->setParent(&slider);
    slider.setStyle(style);
}
