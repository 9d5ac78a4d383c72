#include "widgets/tabwidget.h"

#include <QProxyStyle>
#include <QTabBar>

namespace {

// All text of a tab goes through here, also below a style sheet.
class LiteralText : public QProxyStyle
{
    Q_OBJECT
public:
    void drawItemText(QPainter *painter, const QRect &rect, int flags, const QPalette &palette, bool enabled,
                      const QString &text, QPalette::ColorRole role) const override
    {
        QProxyStyle::drawItemText(painter, rect, flags & ~(Qt::TextShowMnemonic | Qt::TextHideMnemonic),
                                  palette, enabled, text, role);
    }
};

class TabBar : public QTabBar
{
    Q_OBJECT
public:
    explicit TabBar(QWidget *parent)
        : QTabBar(parent)
    {
        setObjectName(QStringLiteral("qt_tabwidget_tabbar")); // like the one that this replaces
        setDrawBase(false);
        auto *style = new LiteralText;
        style->setParent(this);
        setStyle(style);
    }

protected:
    QSize tabSizeHint(int index) const override
    {
        const QString text = tabText(index);
        const int hidden =
            fontMetrics().size(0, text).width() - fontMetrics().size(Qt::TextShowMnemonic, text).width();
        return QTabBar::tabSizeHint(index) + QSize(hidden, 0);
    }
};

} // namespace

TabWidget::TabWidget(QWidget *parent)
    : QTabWidget(parent)
{
    setTabBar(new TabBar(this));
    updateFocusPolicy();
}

void TabWidget::tabInserted(int index)
{
    QTabWidget::tabInserted(index);
    updateFocusPolicy();
}

void TabWidget::tabRemoved(int index)
{
    QTabWidget::tabRemoved(index);
    updateFocusPolicy();
}

void TabWidget::updateFocusPolicy()
{
    tabBar()->setFocusPolicy(count() > 0 ? Qt::TabFocus : Qt::NoFocus);
}

#include "tabwidget.moc"
