#pragma once

#include <QCheckBox>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QStylePainter>

// A check box or radio button whose caption wraps where there is no room for it in one line; Qt's
// own cut it off.
template <class Button> class WrappingButton : public Button
{
public:
    explicit WrappingButton(QWidget* parent = nullptr) : Button(parent)
    {
        QSizePolicy policy = this->sizePolicy();
        policy.setHorizontalPolicy(QSizePolicy::Preferred);
        policy.setVerticalPolicy(QSizePolicy::Preferred);
        policy.setHeightForWidth(true);
        this->setSizePolicy(policy);
    }

    QSize minimumSizeHint() const override
    {
        const QSize hint = Button::sizeHint();
        return {besideCaption() + this->fontMetrics().averageCharWidth() * 12, hint.height()};
    }

    int heightForWidth(int width) const override
    {
        const QSize hint = Button::sizeHint();
        if (width >= hint.width())
            return hint.height();
        const QRect room(0, 0, width - besideCaption(), QWIDGETSIZE_MAX);
        return qMax(hint.height(),
                    this->fontMetrics().boundingRect(room, flags(), this->text()).height());
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        if (this->width() >= Button::sizeHint().width()) {
            Button::paintEvent(event);
            return;
        }
        QStylePainter painter(this);
        QStyleOptionButton option;
        this->initStyleOption(&option);
        const QRect caption = this->style()->subElementRect(captionRect, &option, this);
        option.text.clear();
        painter.drawControl(control, option);
        painter.drawItemText(caption,
                             QStyle::visualAlignment(option.direction, Qt::AlignLeft) | flags(),
                             option.palette, this->isEnabled(), this->text(), QPalette::WindowText);
    }

private:
    static constexpr bool isCheckBox = std::is_same<Button, QCheckBox>::value;
    static constexpr QStyle::ControlElement control =
        isCheckBox ? QStyle::CE_CheckBox : QStyle::CE_RadioButton;
    static constexpr QStyle::SubElement captionRect =
        isCheckBox ? QStyle::SE_CheckBoxContents : QStyle::SE_RadioButtonContents;

    static int flags()
    {
        return Qt::AlignVCenter | Qt::TextWordWrap | Qt::TextShowMnemonic;
    }

    // The width of the indicator and its distance to the caption.
    int besideCaption() const
    {
        return Button::sizeHint().width() -
               this->fontMetrics().size(Qt::TextShowMnemonic, this->text()).width();
    }
};

using WrappingCheckBox = WrappingButton<QCheckBox>;
using WrappingRadioButton = WrappingButton<QRadioButton>;
