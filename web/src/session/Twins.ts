// Tabs of one browser that were copied from each other ask each other who uses a session.

const kChannel = "stockrpt.sessions";
const kPatience = 120; // milliseconds

interface Word {
  asks?: string;
  uses?: string;
}

export class Twins {
  private readonly channel = new BroadcastChannel(kChannel);

  constructor(ownSession: () => string | null) {
    this.channel.addEventListener("message", ({ data }: MessageEvent<Word>) => {
      if (data.asks !== undefined && data.asks === ownSession()) this.channel.postMessage({ uses: data.asks } satisfies Word);
    });
  }

  isInUse(session: string): Promise<boolean> {
    return new Promise((resolve) => {
      const listen = ({ data }: MessageEvent<Word>) => data.uses === session && end(true);
      const end = (used: boolean) => {
        this.channel.removeEventListener("message", listen);
        resolve(used);
      };
      this.channel.addEventListener("message", listen);
      this.channel.postMessage({ asks: session } satisfies Word);
      setTimeout(() => end(false), kPatience);
    });
  }
}
