// SPDX-License-Identifier: MIT
#pragma once

#include <tool/pages/PageSlices.h>

/*! Leaves room between columns: what a part of one touches is drawn with it. */
void partColumns(QVector<RowColumn> &columns);

/*! Makes one column of those that stand above each other. */
void joinColumns(QVector<RowColumn> &columns);

/*! So far the lowest line of a row reaches below its end, as close lines do. */
double reachBelow(const FlowItem &row);
