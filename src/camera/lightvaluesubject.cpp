#include "lightvaluesubject.h"

namespace kestrum {

LightValueSubject::LightValueSubject(double initial, QObject* parent)
    : QObject(parent)
    , m_value(initial)
{}

void LightValueSubject::send(double value)
{
    m_value = value;
    emit sent(value);
}

} // namespace kestrum
