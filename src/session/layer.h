#pragma once
// The mark of the session layer: each of its headers includes it first, through the include root of a layer that may
// see session. Included from a layer below, it is not found, so an include that runs up fails however it is spelt.
