#include "gui/control.h"

#include <algorithm>
#include <cmath>

namespace vl1::gui {

bool CVLControl::setValue(float v)
{
    if (std::isnan(v))
        return false;
    v = std::clamp(v, min, max);
    if (v == value)
        return false;
    value = v;
    return true;
}

float CVLControl::getValueNormalized() const { return max > min ? (value - min) / (max - min) : 0.0f; }

bool CVLControl::setValueNormalized(float normalized)
{
    return setValue(min + std::clamp(normalized, 0.0f, 1.0f) * (max - min));
}

void CVLControl::beginEdit()
{
    if (edit_depth++ == 0 && listener != nullptr)
        listener->controlBeginEdit(this);
}

void CVLControl::endEdit()
{
    if (edit_depth == 0)
        return;
    if (--edit_depth == 0 && listener != nullptr)
        listener->controlEndEdit(this);
}

void CVLControl::notifyValueChanged()
{
    if (listener != nullptr)
        listener->valueChanged(this);
}

}  // namespace vl1::gui
