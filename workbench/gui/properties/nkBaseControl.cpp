#include <nkKernelServicesGUI/nkBaseControl.h>

nkBaseControl::nkBaseControl(const QString &property, QWidget *parent) : QWidget(parent), m_property(property)
{}

nkBaseControl::~nkBaseControl() = default;
