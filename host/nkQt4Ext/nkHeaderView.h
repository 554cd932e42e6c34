#pragma once

#include "nkHeaderViewBase.h"

#include <QPointer>

/// A header that knows the view it belongs to.
/// @tparam View a QAbstractItemView
template <typename View>
class nkHeaderView : public nkHeaderViewBase
{
public:
    /// @param view may be null; not owned
    explicit nkHeaderView(View *view, QWidget *parent = nullptr) : nkHeaderViewBase(parent), m_view(view) {}

    /// Null where there is none, or it is gone.
    View *view() const { return m_view; }

private:
    QPointer<View> m_view;
};
