// Controls that exist once per input port.
#pragma once

#include "platform/runtime/PortIndex.h"

namespace toolkit {

template <class T>
class ControlArray {
public:
    // Makes the controls as children of pParent, which owns them.
    template <class Parent>
    explicit ControlArray(Parent* pParent) {
        for (runtime::PortIndex i = 0; i < runtime::PortCount; ++i) m_pControls(i) = new T(pParent);
    }
    T& operator()(runtime::PortIndex i) const { return *m_pControls(i); }

private:
    runtime::PerPort<T*> m_pControls;
};

}  // namespace toolkit
