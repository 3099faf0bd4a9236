// The whole public interface.
#pragma once

#include <zel/api.h>
#include <zel/archive.h>
#include <zel/color.h>
#include <zel/crc32.h>
#include <zel/exception.h>
#include <zel/file.h>
#include <zel/image.h>
#include <zel/init.h>
#include <zel/memory_blocks.h>
#include <zel/noise.h>
#include <zel/script.h>
#include <zel/timer.h>
#include <zel/vector.h>
#include <zel/verbose.h>
