// SPDX-License-Identifier: MIT
#include <QGuiApplication>

#include <benchmark/benchmark.h>

// Fonts need an application, which needs no display.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
