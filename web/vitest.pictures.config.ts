import { defineConfig } from "vitest/config";

// Renews the pictures of the guide.
export default defineConfig({ test: { include: ["tools/guide-pictures.ts"], environment: "node", testTimeout: 120_000, hookTimeout: 120_000 } });
