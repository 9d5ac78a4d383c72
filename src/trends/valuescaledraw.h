#pragma once

#include <qwt_scale_draw.h>

// Labels of values, with as many digits as tell neighbours apart.
class ValueScaleDraw : public QwtScaleDraw
{
public:
    QwtText label(double value) const override;
};
