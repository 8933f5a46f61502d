#include "callouts/generator/AnnotationVisitor.h"

#include "zrannotations/SymbolAnnotation.h"

namespace zrcallouts {

AnnotationVisitor::~AnnotationVisitor() = default;

bool AnnotationVisitor::Visit(const du::SmartPtr<zrk::Annotation>& annotation) {
    if (const auto symbol = du::DynamicCast<zrannotations::SymbolAnnotation>(annotation)) {
        m_symbols.emplace(symbol->GetInstance(), annotation);
    } else {
        m_others.insert(annotation);
    }
    return true;
}

unsigned int AnnotationVisitor::GetSymbolId(const du::SmartPtr<zrk::Instance>& instance) const {
    const auto symbol = instance ? m_symbols.find(instance) : m_symbols.end();
    return symbol != m_symbols.end() ? symbol->second->Id() : 0;
}

}  // namespace zrcallouts
