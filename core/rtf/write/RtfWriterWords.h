// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfProps.h>

#include <QByteArray>

/*! Appends the words that turn the properties \a from into \a to; nothing when they are equal. */
void appendRtfWords(const RtfCharProps &from, const RtfCharProps &to, QByteArray *rtf);
void appendRtfWords(const RtfParaProps &from, const RtfParaProps &to, QByteArray *rtf);
