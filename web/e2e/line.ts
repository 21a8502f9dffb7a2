// A line between page and server that a test can cut and mend, and listen to.
import { connect, createServer, type AddressInfo, type Server as NetServer, type Socket } from "node:net";

export class Line {
  address = "";
  // What the server says, as it comes; long messages may come in pieces.
  onText: (text: string) => void = () => {};
  private readonly ends = new Set<Socket>();
  private readonly listener: NetServer;
  private port = 0;
  private whole = true;

  constructor() {
    this.listener = createServer((near) => this.join(near));
  }

  async open(server: string): Promise<void> {
    this.port = Number(new URL(server).port);
    await new Promise<void>((done) => this.listener.listen(0, "127.0.0.1", done));
    this.address = `http://127.0.0.1:${(this.listener.address() as AddressInfo).port}`;
  }

  // Drops what is connected, and whoever comes.
  cut(): void {
    this.whole = false;
    for (const end of this.ends) end.destroy();
  }

  mend(): void {
    this.whole = true;
  }

  async close(): Promise<void> {
    this.cut();
    await new Promise((done) => this.listener.close(done));
  }

  private join(near: Socket): void {
    if (!this.whole) return void near.destroy();
    const far = connect(this.port, "127.0.0.1");
    for (const [end, other] of [[near, far], [far, near]] as const) {
      this.ends.add(end);
      end.on("error", () => other.destroy());
      end.on("close", () => {
        this.ends.delete(end);
        other.destroy();
      });
      end.pipe(other);
    }
    far.on("data", (bytes: Buffer) => this.onText(bytes.toString("utf8")));
  }
}
