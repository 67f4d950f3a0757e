// What every editor control bound to a value shares: a tag (the uid of its parameter, or -1),
// a value in its range, and a listener told of gesture begin, value changes and gesture end.
#pragma once

#include <cstdint>

namespace vl1::gui {

class CVLControl;

class control_listener {
public:
    virtual ~control_listener() = default;
    virtual void valueChanged(CVLControl* control) = 0;
    virtual void controlBeginEdit(CVLControl* control) = 0;
    virtual void controlEndEdit(CVLControl* control) = 0;
};

class CVLControl {
public:
    /// Tag of a control that stands for no parameter.
    static constexpr int32_t no_tag = -1;

    CVLControl(control_listener* listener, int32_t tag, float min = 0.0f, float max = 1.0f)
        : listener(listener), tag(tag), min(min), max(max), value(min)
    {
    }
    virtual ~CVLControl() = default;

    int32_t getTag() const { return tag; }
    float getValue() const { return value; }
    float getMin() const { return min; }
    float getMax() const { return max; }
    /// Stores the value, limited to the range; true if it changed.
    virtual bool setValue(float v);
    /// The value as 0..1 of the range.
    float getValueNormalized() const;
    bool setValueNormalized(float normalized);

    bool isEditing() const { return edit_depth > 0; }
    void beginEdit();
    void endEdit();
    void notifyValueChanged();

protected:
    control_listener* listener;

private:
    int32_t tag;
    float min, max;
    float value;
    int edit_depth = 0;
};

}  // namespace vl1::gui
